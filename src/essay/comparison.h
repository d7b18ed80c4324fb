// The essay as it was first written, beside the report on the revised one.
#pragma once

#include <string>

#include "core/program.h"
#include "core/window_shell.h"
#include "platform/controls.h"
#include "platform/web_browser.h"

namespace marovane {

/// The page of `frmEssayCompare`.
/// @param text UTF-8, lines ended by CR LF
base::Html EssayComparePage(const std::string& text);

class FrmEssayCompare : public Form {
 public:
  explicit FrmEssayCompare(Program& program);

  void ShowHtml(const std::string& text);
  void Form_Load() override;
  void imgClose_Click() { fade_.Out(); }

  WebBrowser webHtml{*this, "webHtml"};
  PictureBox picBG{*this, "picBG"}, imgClose{*this, "imgClose"};

 private:
  void Leave();

  Program& program_;
  Fade fade_;
};

}  // namespace marovane
