// What has to be said to Qt before and after its application object is made.
#pragma once

#include <QString>
#include <functional>
#include <string>

namespace marovane {

/// Before the QApplication: what the web engine, which comes later, will rely on.
void PrepareApplication();

/// After it: fonts and the style sheet of the skin (<ui>/skin/marovane.qss), icon and name.
void ConfigureApplication(const QString& uiFolder);

/// A whole life: makes the application, hands the words of the command line to the program, and says in a
/// box why it could not start. Returns the exit status.
int RunApplication(int argc, char** argv, const std::string& uiFolder,
                   const std::function<void(const std::string& words)>& run);

}  // namespace marovane
