// The desktop edition.
#include <fmt/format.h>

#include <string_view>

#include "app/desktop_program.h"
#include "qt/qt_application.h"

int main(int argc, char** argv) {
  using namespace marovane;
  // Before anything wants a screen: an update asks whether the program starts at all.
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    fmt::print("Marovane {}\n", Program::Version());
    return EXIT_SUCCESS;
  }
  return RunApplication(argc, argv, ReadHostEnvironment("").programFolder / "ui",
                        [](const std::string& words) {
                          DesktopProgram program(words);
                          if (program.Start()) program.Run();
                        });
}
