// Asks for the title of a new topic of the learner's own.
#pragma once

#include "core/shell_window.h"

namespace marovane {

struct EssayContext;

class FrmEssayInputForm : public ButtonWindow<2>, public HallWindow {
 public:
  explicit FrmEssayInputForm(EssayContext& context);

  Form& AsForm() override { return *this; }
  /// Button 0 starts the essay, 1 gives up.
  void picButtons_Click(int index) override;
  void imgClose_Click() override { picButtons_Click(1); }

  TextBox txtInput{*this, "txtInput"};

 private:
  EssayContext& context_;
};

}  // namespace marovane
