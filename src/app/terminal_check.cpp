#include "app/terminal_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "app/compose.h"
#include "core/typed_text.h"
#include "platform/html.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

nlohmann::ordered_json FaultList(const tolvex::Judgement& judgement) {
  auto list = nlohmann::ordered_json::array();
  for (const tolvex::Fault& fault : judgement.faults) {
    list.push_back({{"code", fault.code},
                    {"level", fault.level == tolvex::Verdict::kWatch ? "WARN" : "ERRS"},
                    {"span", {fault.span.begin, fault.span.end}},
                    {"message", fault.message},
                    {"corrections", fault.corrections}});
  }
  return list;
}

}  // namespace

TerminalCheck::TerminalCheck(Composition& composition, bool json)
    : composition_(composition), fetcher_(composition.program), json_(json) {}

void TerminalCheck::Check(const std::string& sentence) {
  Ask(sentence);
  Raise(composition_.program.app.gVerdict);
  if (json_) {
    PrintJson(sentence);
  } else {
    Print(sentence);
  }
}

// As a learner would: the sentence is pasted into the box, and Enter pressed.
void TerminalCheck::Ask(const std::string& sentence) {
  Program& program = composition_.program;
  FrmMain& frmMain = *composition_.frmMain;
  composition_.frmBrowser->webOther.SetRenderer(&fetcher_);
  if (!frmMain.Visible()) frmMain.Show();
  frmMain.txtInput.SetFocus();
  frmMain.txtInput.Text = sentence;
  program.app.gVerdict.clear();
  frmMain.lastAnswer = {};
  frmMain.stopReason.clear();
  frmMain.offersEssays = false;
  int keyCode = kKeyEnter;
  try {
    frmMain.txtInput.KeyDown.Raise(keyCode);
  } catch (const RunTimeError& error) {
    fmt::print(stderr, "檢查中斷：{}\n", error.what());
    frmMain.stopReason = error.what();
    program.app.gVerdict.clear();
    frmMain.Enabled = true;
  }
  if (program.app.gVerdict.empty()) program.app.gVerdict = "STOP";
}

void TerminalCheck::Raise(const std::string& verdict) {
  // From the mildest to the gravest.
  constexpr std::array kOrder{kRight, kWatch, kErrors, kNoAnswer};
  const ExitStatus status = verdict == "PASS"   ? kRight
                            : verdict == "WARN" ? kWatch
                            : verdict == "ERRS" ? kErrors
                                                : kNoAnswer;
  const auto rank = [&](int value) { return std::ranges::find(kOrder, value) - kOrder.begin(); };
  if (rank(status) > rank(status_)) status_ = status;
}

std::string TerminalCheck::MarkedSentence(const std::string& sentence) const {
  const auto& marked = composition_.frmMain->lastAnswer.sentence;
  return marked.empty() ? sentence : marked;
}

std::string TerminalCheck::Outline() const {
  const auto& errcode = composition_.frmMain->lastAnswer.errcode;
  return errcode.empty() || errcode == "0" ? "" : composition_.errList.Outline(errcode);
}

void TerminalCheck::Print(const std::string& sentence) const {
  const auto& verdict = composition_.program.app.gVerdict;
  fmt::print("{}", verdict);
  if (verdict != "STOP") {
    const std::string outline = Outline();
    const auto& errcode = composition_.frmMain->lastAnswer.errcode;
    if (!outline.empty()) fmt::print("  {}  {}", errcode, outline);
    fmt::print("\n{}\n\n{}", MarkedSentence(sentence), HtmlToText(fetcher_.Page()));
  }
  fmt::print("\n");
  std::fflush(stdout);
}

tolvex::Judgement TerminalCheck::Faults(const std::string& plain) {
  if (composition_.program.app.gVerdict == "STOP") return {};
  if (!engine_) engine_.emplace(tolvex::FindDataDir());
  return engine_->Judge(plain);
}

void TerminalCheck::PrintJson(const std::string& sentence) {
  const auto& verdict = composition_.program.app.gVerdict;
  const std::string plain = TypedSentence(composition_.frmMain->txtInput.Text()).Plain();
  const tolvex::Judgement judgement = Faults(plain);
  const nlohmann::ordered_json line{{"sentence", sentence},
                                    {"checked", plain},
                                    {"verdict", verdict},
                                    {"errcode", composition_.frmMain->lastAnswer.errcode},
                                    {"outline", verdict == "STOP" ? "" : Outline()},
                                    {"marked", MarkedSentence(sentence)},
                                    {"faults", FaultList(judgement)},
                                    {"corrected", judgement.corrected},
                                    {"reason", composition_.frmMain->stopReason},
                                    {"page", verdict == "STOP" ? "" : HtmlToText(fetcher_.Page())}};
  fmt::print("{}\n", line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  std::fflush(stdout);
}

}  // namespace marovane
