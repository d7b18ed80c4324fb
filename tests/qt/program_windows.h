// All windows of the program, each brought up in a state in which a person sees it. A new window is a line
// more in the list of program_windows.cpp.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "app/compose.h"
#include "tests/qt/qt_machine.h"
#include "tests/support/fake_hall.h"

namespace marovane {

/// A program with real windows and no server.
struct WindowedProgram {
  WindowedProgram();

  QtMachine machine{MAROVANE_UI_FOLDER};
  Composition composition;
  FakeSplash splash{composition.program.machine};
};

/// Clicks down a page of a real engine, a line lower each time and from the first line again, until the
/// condition holds, which gets the number of clicks.
void ClickDown(WindowedProgram& program, const WebBrowser& pane, const QPoint& from, int lines,
               const std::function<bool(int clicks)>& isMet);

struct ShownWindow {
  std::string name;  ///< window and state, for messages and file names
  /// Brings the window up and returns it.
  std::function<Form&(WindowedProgram&)> show;
};

/// Prints it by its name, for messages of failed tests.
inline void PrintTo(const ShownWindow& window, std::ostream* out) { *out << window.name; }

const std::vector<ShownWindow>& ProgramWindows();

}  // namespace marovane
