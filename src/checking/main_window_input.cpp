// What Enter does in the input box, and what is done with its text.
#include "base/cp950.h"
#include "base/text.h"
#include "base/utf16.h"
#include "checking/main_window.h"
#include "checking/sentence_check.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "protocol/pages.h"

namespace marovane {

namespace {

// A simplified character may have no code in the code page, and is Chinese all the same.
bool IsChinese(char16_t character) {
  const int code = base::Asc(character);
  const bool isIdeograph = character >= u'\u3400' && character <= u'\u9fff';
  return code >= 255 || code < 1 || isIdeograph;
}

}  // namespace

void FrmMain::HandleEnter() {
  auto& app = program.app;
  const std::string text = base::Trim(txtInput.Text());
  if (text.empty() && !app.gEssayMode) return;
  const std::string chinese = CheckInputText("CHECK_CHINESE", text);
  if (!chinese.empty()) return TranslateInput(chinese);
  if (app.gEssayMode) {
    if (text.empty()) {
      ShowMessage(program, Message::kWrongSentence);
    } else {
      app.gVerdict = text;  // the walk through the essay waits for it
    }
    return;
  }
  WriteNeedSync(program, "Y");
  PassStringToEngine();
}

void FrmMain::TranslateInput(const std::string& chinese) {
  program.app.gLastInput = chinese;
  FrmMessage::ProgressMsgBox(program, Progress::kTranslating);
  machine.loop.DoEvents();
  const std::string result = TranslateText(chinese);
  program.frmMessage->closeForm();
  machine.loop.DoEvents();
  txtInput.Text = result;
  txtInput.SelStart = base::Len(result);
  if (result.empty()) ShowMessage(program, Message::kNoTranslation);
}

std::string FrmMain::TranslateText(const std::string& text) {
  if (!EngineFor(*this).IsOnline()) return "";
  const std::string reply = TryPost(program, program.app.gWebEngineRoot + protocol::page::kTranslate,
                                    {{"ls", "zh-TW"}, {"q", base::Replace(text, " ", "%20")}});
  return reply.starts_with("OK") ? base::Replace(reply, "OK#", "") : "";
}

std::string FrmMain::CheckInputText(const std::string& action, const std::string& text) {
  std::string result;
  if (action.empty() || action == "CHECK_SELECT_TEXT") result = LookUpSelection();
  if ((action.empty() || action == "CHECK_CHINESE") && program.app.gBigTextInput) {
    const std::string chinese = LookUpChinese(text);
    if (!chinese.empty()) result = chinese;
  }
  txtInput.SelLength = 0;
  return result;
}

std::string FrmMain::LookUpSelection() {
  std::string selection = base::Trim(txtInput.SelText());
  for (char16_t character : base::ToUtf16(selection)) {
    if (IsChinese(character)) return "";
  }
  if (selection.empty()) return selection;
  const auto& frmCollocation = program.hall.frmCollocation;
  const bool isPhrase = selection.find(' ') != std::string::npos;
  frmCollocation->SetFreeword(1, selection);
  if (!isPhrase) {
    frmCollocation->SetKeyword(0, selection);
    frmCollocation->SetKeyword(1, selection);
  }
  frmCollocation->SelectTab(isPhrase ? 1 : 2);
  machine.loop.DoEvents();
  machine.loop.DoEvents();
  return selection;
}

std::string FrmMain::LookUpChinese(const std::string& text) {
  const std::u16string characters = base::ToUtf16(text);
  const auto begin = std::find_if(characters.begin(), characters.end(), IsChinese);
  const auto end = std::find_if_not(begin, characters.end(), IsChinese);
  std::string run = base::ToUtf8(std::u16string(begin, end));
  if (!run.empty()) program.hall.frmCollocation->SetFreeword(0, run);
  return run;
}

}  // namespace marovane
