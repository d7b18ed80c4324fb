// Saves a picture of every window: gallery <folder>. For the eye; the tests look at facts only.
#include <QApplication>
#include <QDir>
#include <iostream>

#include "qt/qt_application.h"
#include "qt/text_convert.h"
#include "tests/qt/program_windows.h"

int main(int argc, char** argv) {
  using namespace marovane;
  PrepareApplication();
  const QApplication application(argc, argv);
  ConfigureApplication(MAROVANE_UI_FOLDER);
  const QString folder = argc > 1 ? argv[1] : ".";
  QDir().mkpath(folder);
  for (const ShownWindow& window : ProgramWindows()) {
    WindowedProgram program;
    Form& form = window.show(program);
    program.machine.loop.DoEvents();
    FormView& view = *program.machine.windows.Find(form);
    QPixmap picture = view.Frame().grab();
    picture.save(folder + "/" + Text(window.name) + ".png");
    for (const QString& problem : view.Problems()) std::cout << window.name << ": " << Utf8(problem) << "\n";
  }
  return 0;
}
