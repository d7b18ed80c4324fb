// The word helper at a terminal.
#include <fmt/format.h>

#include "app/compose.h"
#include "app/terminal.h"
#include "app/terminal_command.h"
#include "base/text.h"
#include "core/message_catalogue.h"
#include "platform/html.h"

namespace marovane {

namespace {

constexpr int kNothingFound = 3;

// Partners are in the list of the word helper, near-synonyms on a page of the browser.
int AskWordBank(Composition& composition, const TerminalCommand& command) {
  auto& app = composition.program.app;
  if (command.local) app.gUseWebEngineWbank = false;
  const bool wantsPartners =
      base::Mid(command.query, static_cast<int>(command.query.rfind(',')) + 2, 1) == "C";
  app.gSuggestMode = wantsPartners ? "collo" : "similar";
  composition.frmCollocation->PassEngineCheckWBank(command.query);
  const auto items = composition.frmCollocation->cboCollect.Items();
  const std::string page = HtmlToText(composition.frmBrowser->webMain.Page());
  for (const auto& item : items) fmt::print("{}\n", item);
  fmt::print("{}", page);
  return items.empty() && page.empty() ? kNothingFound : 0;
}

int Translate(Composition& composition, const std::string& text) {
  const std::string english = composition.frmMain->TranslateText(text);
  if (english.empty()) {
    fmt::print(stderr, "{}\n", base::Replace(std::string(Message::kNoTranslation.text), "\r\n\r\n", "，"));
    return kNothingFound;
  }
  fmt::print("{}\n", english);
  return 0;
}

}  // namespace

int RunWordCommand(Composition& composition, const TerminalCommand& command) {
  if (command.kind == TerminalCommand::Kind::kTranslate) return Translate(composition, command.query);
  return AskWordBank(composition, command);
}

}  // namespace marovane
