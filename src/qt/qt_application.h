// What has to be said to Qt before and after its application object is made.
#pragma once

#include <QString>

/// Before the QApplication: what the web engine, which comes later, will rely on.
void PrepareApplication();

/// After it: fonts and the style sheet of the skin (<ui>/skin/marovane.qss), icon and name.
void ConfigureApplication(const QString& uiFolder);
