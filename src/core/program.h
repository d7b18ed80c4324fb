// One running program.
#pragma once

#include <string>

#include "core/app_state.h"
#include "core/installation.h"
#include "core/proof.h"
#include "core/windows.h"
#include "platform/window.h"

namespace marovane {

class FrmMessage;

/// What all windows and procedures of one running program share. It is handed in everywhere; two programs can
/// live in one process.
struct Program {
  Program(Machine& theMachine, InstallationValues values);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Machine& machine;
  InstallationValues installation;
  AppState app;
  Hall hall;
  Window<FrmMessage> frmMessage;
  Proof proof{*this};

  /// Version of the program, major.minor.revision.
  static std::string Version();
};

}  // namespace marovane
