// The start of the program: the shared state's defaults and the invisible root window.
#pragma once

#include "platform/form.h"

namespace marovane {

struct Program;

/// Fills the shared state: defaults, `debug.ini`, server roots, paths, the engine's exchange file, settings.
/// Throws RunTimeError when a file cannot be read or written.
void InitApplicationState(Program& program);
/// Fills the connection strings.
void InitConnectionStrings(Program& program);
/// True when the screen shows 96 dots to the logical inch.
bool CheckScreenDpi(Program& program);

/// The root window. It is never seen and stays loaded for the whole run.
class FrmStartUp : public Form {
 public:
  explicit FrmStartUp(Program& program);

  /// The start, up to the live main window.
  void Form_Load() override;
  void Form_Unload() override;

  /// The start without windows, for editions that have none: all that comes before the main window is shown.
  static void PrepareProgram(Program& program);

 private:
  static void RunCampusLogin(Program& program);

  Program& program_;
};

}  // namespace marovane
