// Offers word partners and near-synonyms for a right sentence, and hands a pick to the word helper.
#pragma once

#include <string>

#include "core/program.h"
#include "core/window_shell.h"
#include "platform/web_browser.h"
#include "wordhelper/collocation.h"

namespace marovane {

class FrmSuggest : public Form, public Suggestions {
 public:
  FrmSuggest(Program& program, Window<FrmCollocation>& frmCollocation);

  Form& AsForm() override { return *this; }
  void HideTabs() override;
  /// Fills the tab of a kind and brings it up.
  /// @param kind "COL" (tab 0) or "SYN" (tab 1); any other fills none
  /// @param list items separated by ",", or the path of a file with one "COL" item per line
  void ShowSuggest(const std::string& kind, const std::string& list) override;

  void Form_Load() override;
  void Form_Resize() override;
  void Form_Unload() override;
  void SetDefaultValue();
  void picTab_Click(int index);

  ControlArray<WebBrowser, 2> webMain{*this, "webMain"};
  ControlArray<PictureBox, 2> picTab{*this, "picTab"}, imgTabOn{*this, "imgTabOn"},
      imgTabOff{*this, "imgTabOff"};
  ControlArray<Label, 2> lblTab{*this, "lblTab"};
  PictureBox imgClose{*this, "imgClose"}, picBackground{*this, "picBackground"};

 private:
  void imgClose_Click();
  std::string ListOf(const std::string& list, std::string& separator) const;
  void GrowFor(int items);
  void PassToWordHelper(int index, const std::string& parameter);
  void AskPartners(const std::string& parameter);

  Program& program_;
  Window<FrmCollocation>& frmCollocation_;
  Fade fade_;
  ShellButtons shell_;
};

}  // namespace marovane
