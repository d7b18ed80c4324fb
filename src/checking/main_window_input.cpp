// What Enter does in the input box, and what is done with its text.
#include <cctype>

#include "base/text.h"
#include "checking/main_window.h"
#include "checking/sentence_check.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/typed_text.h"
#include "core/window_shell.h"
#include "protocol/pages.h"

namespace marovane {

namespace {

bool IsWordSign(char sign) { return std::isalnum(static_cast<unsigned char>(sign)) != 0; }

// Puts a blank between two words that would touch.
void Append(std::string& text, std::string_view part) {
  if (!text.empty() && !part.empty() && IsWordSign(text.back()) && IsWordSign(part.front())) text += ' ';
  text += part;
}

}  // namespace

void FrmMain::HandleEnter() {
  auto& app = program.app;
  const std::string text = base::Trim(txtInput.Text());
  if (text.empty() && !app.gEssayMode) return;
  if (app.gEssayMode && Left <= kAway) return;  // a second Enter, after the walk has gone on
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
  if (OpensEssayOf(text)) return;
  WriteNeedSync(program, "Y");
  PassStringToEngine();
}

// Whoever pastes a paragraph wants each of its sentences judged.
bool FrmMain::OpensEssayOf(const std::string& text) {
  if (!offersEssays || !HoldsSeveralSentences(text)) return false;
  if (!Confirm(program, Message::kSeveralSentences)) return false;
  if (program.app.gOpenEssay && !Confirm(program, Message::kNewEssay)) return true;
  program.hall.frmEssay->StartEssayWith(text);
  return true;
}

// When one stretch cannot be translated, the box stays as it was.
void FrmMain::TranslateInput(const std::string& chinese) {
  program.app.gLastInput = chinese;
  FrmMessage::ProgressMsgBox(program, Progress::kTranslating);
  machine.loop.DoEvents();
  const int timesBefore = machine.loop.TimesBrokenOff();
  const auto english = WithEnglish(txtInput.Text());
  program.frmMessage->closeForm();
  machine.loop.DoEvents();
  if (machine.loop.TimesBrokenOff() != timesBefore) return;
  if (!english) {
    stopReason = Message::kNoTranslation.text;
    return ShowMessage(program, Message::kNoTranslation);
  }
  txtInput.Text = *english;
  ForgetVerdict();
  txtInput.SelStart = base::Len(*english);
}

std::optional<std::string> FrmMain::WithEnglish(const std::string& text) {
  std::string english;
  std::string_view rest = text;
  for (TextRange run = FirstChinese(rest); run.length > 0; run = FirstChinese(rest)) {
    std::string translation = TranslateText(std::string(rest.substr(run.begin, run.length)));
    if (translation.empty()) return std::nullopt;
    // Of the meanings of a word within a sentence the first one fits best.
    if (run.length < text.size()) translation = translation.substr(0, translation.find(';'));
    Append(english, rest.substr(0, run.begin));
    Append(english, translation);
    rest.remove_prefix(run.begin + run.length);
  }
  Append(english, rest);
  return english;
}

std::string FrmMain::TranslateText(const std::string& text) {
  if (!EngineFor(*this).IsOnline()) return "";
  const std::string reply =
      TryPost(program, program.app.gWebEngineRoot + protocol::page::kTranslate,
              {{"ls", "zh-TW"}, {"q", base::Replace(TypedSentence(text).Written(), " ", "%20")}});
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
  const std::string selected = base::Trim(txtInput.SelText());
  if (selected.empty() || HoldsChinese(selected)) return "";
  std::string selection = TypedSentence(selected).Plain();
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
  const TextRange run = FirstChinese(text);
  if (run.length == 0) return "";
  std::string chinese = text.substr(run.begin, run.length);
  program.hall.frmCollocation->SetFreeword(0, chinese);
  return chinese;
}

}  // namespace marovane
