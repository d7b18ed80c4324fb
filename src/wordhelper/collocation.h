// The word helper: English for Chinese, example sentences, word partners and near-synonyms.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/shell_window.h"
#include "platform/timer.h"

namespace protocol {
struct OutsideSite;
}

namespace marovane {

struct Progress;

class FrmCollocation : public ButtonWindow<3>, public WordHelper {
 public:
  explicit FrmCollocation(Program& program);

  Form& AsForm() override { return *this; }
  void SetFreeword(int index, const std::string& text) override { txtFreeword(index).Text = text; }
  void SetKeyword(int index, const std::string& text) override { txtKeyword(index).Text = text; }
  void SelectTab(int index) override { picTabs_Click(index); }

  void Form_Load() override;
  void Form_Activate() override;

  void SetDefaultValue();
  void SetMouseIconHand();
  void picTabs_Click(int index);
  /// Shows a query "word,code" as the word and the options that ask it. An unknown code sets no option.
  void ShowQuery(const std::string& para);

  /// Asks the word bank, and fills the list of partners or has the browser show the near-synonyms, as
  /// gSuggestMode says.
  /// @param para the word, a comma and a code: CNV, CNJ, CNP, CVM, CJM, SN, SV or SJ
  void PassEngineCheckWBank(const std::string& para);
  /// Fills the lists of outside sources. Gives the server's reply, with kSearchedText (web_sources.h) as the
  /// placeholder, or `refusal::kConnectFailed`.
  void GetCollectUrlSet(std::string& result);

  ControlArray<PictureBox, 4> picTabs{*this, "picTabs"}, imgTabOn{*this, "imgTabOn"},
      imgTabOff{*this, "imgTabOff"}, picFormTabs{*this, "picFormTabs"};
  ControlArray<TextBox, 2> txtFreeword{*this, "txtFreeword"}, txtKeyword{*this, "txtKeyword"};
  ControlArray<Label, 2> lblMessage{*this, "lblMessage"};
  ControlArray<ComboBox, 3> cboWebSource{*this, "cboWebSource"}, cboWebSourceLang{*this, "cboWebSourceLang"},
      cboWebSourceUrl{*this, "cboWebSourceUrl"};
  ControlArray<PictureBox, 2> picSearchs{*this, "picSearchs"}, imgSearchOff{*this, "imgSearchOff"},
      imgSearchOver{*this, "imgSearchOver"}, imgSearchOn{*this, "imgSearchOn"};
  ControlArray<OptionButton, 3> optPara1{*this, "optPara1"}, optPara3{*this, "optPara3"};
  ControlArray<OptionButton, 4> optPara2{*this, "optPara2"};
  ControlArray<Label, 3> lblPara1{*this, "lblPara1"}, lblPara3{*this, "lblPara3"};
  ControlArray<Label, 4> lblPara2{*this, "lblPara2"};
  ComboBox cboCollect{*this, "cboCollect"};
  Label lblCollectMessage{*this, "lblCollectMessage"}, lblSourceCap{*this, "lblSourceCap"},
      lblCaps{*this, "lblCaps"};
  PictureBox imgArrow{*this, "imgArrow"};
  Timer tmrArrow;

 private:
  void BindOptions();
  void BindInputs();
  void LookUpMainText();
  void optPara1_Click(int index);
  void picButtons_Click(int index) override;
  void picSearchs_Click(int index);
  void cboCollect_Click();
  void tmrArrow_Timer();
  void imgClose_Click() override;
  void AskPartners(const std::string& word);
  void AskSynonyms(const std::string& word);
  std::string TextToSearch(int index);
  void AddSource(const protocol::OutsideSite& source);
  void ChooseSources();
  void SaveSources();

  void PassEngineCheckWBankLocal(const std::string& para);
  void PassEngineCheckWBankWeb(const std::string& para);
  void GiveButtonsBack();
  void UpdateUserAct();
  std::string RunEngine(const std::string& para);
  std::string ResultFile();
  void ShowResultFile(const std::string& path);
  std::optional<std::string> AskWebEngine(const std::string& para);
  void ShowReply(const std::string& payload, bool plainLines);
  void ShowProgress(const Progress& progress);
  void ShowEngineAddress();
  void EndProgress();
  void ShowPartners(const std::vector<std::string>& items);
  void ShowResultControls(bool visible);
  void ShowNoReply();
  void ShowNothingFound();

  static constexpr int kNoTab = 99;
  int currentTab_ = kNoTab;
  int arrowTicks_ = 0;
  int timesBrokenOff_ = 0;    // when the engine was asked
  std::string pickedPhrase_;  ///< what the examples are wanted for
  std::string lastMainText_;  ///< text of the main window when it was last taken over
};

}  // namespace marovane
