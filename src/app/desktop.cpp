// The desktop edition.
#include "app/desktop_program.h"
#include "qt/qt_application.h"

int main(int argc, char** argv) {
  return RunApplication(argc, argv, ReadHostEnvironment("").programFolder / "ui",
                        [](const std::string& words) {
                          DesktopProgram program(words);
                          if (program.Start()) program.Run();
                        });
}
