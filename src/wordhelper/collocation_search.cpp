// What the buttons of the word helper ask for, and the outside sources.
#include <array>

#include "base/percent.h"
#include "base/text.h"
#include "core/message.h"
#include "core/server_access.h"
#include "platform/chinese.h"
#include "platform/desktop.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"
#include "wordhelper/collocation.h"
#include "wordhelper/pair_code.h"
#include "wordhelper/web_sources.h"

namespace marovane {

namespace {

constexpr std::array kSearchModes{"chn2eng", "eng2xpl", "collo"};

void Clear(ComboBox& list) {
  list.Items = std::vector<std::string>{};
  list.ListIndex = -1;
}

void AddItem(ComboBox& list, const std::string& item) {
  auto items = list.Items();
  items.push_back(item);
  list.Items = items;
}

// The item of a hidden list that belongs to the chosen item of the shown one.
std::string Beside(const ComboBox& shown, const ComboBox& hidden) {
  return hidden.Items().at(static_cast<std::size_t>(shown.ListIndex()));
}

}  // namespace

void FrmCollocation::picButtons_Click(int index) {
  arrowTicks_ = 0;
  if (index == 2) {
    const auto phrase = base::Split(cboCollect.Text(), ">>");
    pickedPhrase_ = phrase.empty() ? "" : base::Trim(phrase[0]);
    return picSearchs_Click(2);
  }
  const std::string word = base::Trim(txtKeyword(index).Text());
  if (word.empty()) {
    ShowMessage(program_, Message::kEnterWord);
  } else if (index == 0) {
    AskPartners(word);
  } else {
    AskSynonyms(word);
  }
}

void FrmCollocation::AskPartners(const std::string& word) {
  program_.app.gSuggestMode = "collo";
  std::string para = word;
  for (const auto& pair : kPairCodes) {
    if (optPara1(pair.word).Value && optPara2(pair.partner).Value) para += "," + std::string(pair.code);
  }
  PassEngineCheckWBank(para);
}

void FrmCollocation::AskSynonyms(const std::string& word) {
  program_.app.gSuggestMode = "similar";
  const int chosen = SelectedOption(optPara3);
  PassEngineCheckWBank(word + "," + std::string(kSynonymCodes.at(static_cast<std::size_t>(chosen))));
}

// Sources of Chinese want simplified characters, percent-encoded.
std::string FrmCollocation::TextToSearch(int index) {
  if (index == 2) return pickedPhrase_;
  const std::string text = base::Trim(txtFreeword(index).Text());
  return index == 0 ? base::UrlEncodeUtf8(base::Trim(machine.chinese.ToSimplified(text))) : text;
}

void FrmCollocation::picSearchs_Click(int index) {
  auto& app = program_.app;
  if (cboWebSource(index).ListIndex < 0) return ShowMessage(program_, Message::kNoSource);
  app.gSuggestMode = kSearchModes.at(static_cast<std::size_t>(index));
  const protocol::OutsideSite site{.name = cboWebSource(index).Text(),
                                   .kind = "",
                                   .lang = Beside(cboWebSource(index), cboWebSourceLang(index)),
                                   .url = Beside(cboWebSource(index), cboWebSourceUrl(index))};
  machine.desktop.OpenOutside(AddressOf(site, TextToSearch(index)));
  UpdateUserAct();
}

void FrmCollocation::GetCollectUrlSet(std::string& result) {
  // Before anything is split: "#" may part the fields.
  result = base::Replace(AskServer(program_, protocol::page::kWebHelperSites), protocol::kTextPlaceholder,
                         kSearchedText);
  if (result == protocol::refusal::kConnectFailed) return;
  for (int i = 0; i < cboWebSource.Count(); ++i) {
    for (ComboBox* list : {&cboWebSource(i), &cboWebSourceLang(i), &cboWebSourceUrl(i)}) Clear(*list);
  }
  const protocol::OutsideSites list = protocol::ParseOutsideSites(result);
  for (const auto& site : list.sites) {
    AddSource(site);
    machine.loop.DoEvents();
  }
  ChooseSources();
  if (list.isFaulty) ShowMessage(program_, Message::kBadSourceList);
}

void FrmCollocation::AddSource(const protocol::OutsideSite& source) {
  const auto addTo = [&](int index) {
    AddItem(cboWebSource(index), source.name);
    AddItem(cboWebSourceLang(index), source.lang);
    AddItem(cboWebSourceUrl(index), source.url);
  };
  if (source.kind == "cn") return addTo(0);
  addTo(1);
  addTo(2);
}

// As at the last close; a list without entries has nothing to choose.
void FrmCollocation::ChooseSources() {
  const ChosenSources chosen = ReadChosenSources(program_);
  for (int i = 0; i < cboWebSource.Count(); ++i) {
    const auto& names = cboWebSource(i).Items();
    if (names.empty()) continue;
    cboWebSource(i).ListIndex = IndexOfChosen(names, chosen.at(static_cast<std::size_t>(i)));
  }
}

// A list that came up empty keeps the choice of the time before.
void FrmCollocation::SaveSources() {
  ChosenSources chosen = ReadChosenSources(program_);
  bool hasChoice = false;
  for (int i = 0; i < cboWebSource.Count(); ++i) {
    if (cboWebSource(i).ListIndex < 0) continue;
    chosen.at(static_cast<std::size_t>(i)) = cboWebSource(i).Text();
    hasChoice = true;
  }
  if (hasChoice) WriteChosenSources(program_, chosen);
}

}  // namespace marovane
