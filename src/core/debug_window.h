// Moves the main window by numbers, for developers.
#pragma once

#include "core/program.h"
#include "platform/controls.h"

namespace marovane {

class FrmDebug : public Form, public HallWindow {
 public:
  explicit FrmDebug(Program& program);

  Form& AsForm() override { return *this; }
  void Form_Load() override;

  TextBox txtMainX{*this, "txtMainX"}, txtMainY{*this, "txtMainY"};
  CommandButton cmdMainPosGet{*this, "cmdMainPosGet"}, cmdMainPosReset{*this, "cmdMainPosReset"};

 private:
  void Get();
  void Set();

  Program& program_;
};

}  // namespace marovane
