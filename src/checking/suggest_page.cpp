#include "checking/suggest_page.h"

#include <array>

#include "base/html.h"
#include "base/text.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

struct SpeechPair {
  const char *first, *second, *code;
};

constexpr std::array<SpeechPair, 5> kSpeechPairs{{{"名詞", "動詞", "CNV"},
                                                  {"名詞", "形容詞", "CNJ"},
                                                  {"名詞", "介系詞", "CNP"},
                                                  {"動詞", "副詞", "CVM"},
                                                  {"形容詞", "副詞", "CJM"}}};

bool Holds(const std::string& text, const char* word) { return text.find(word) != std::string::npos; }

Suggestion ReadSynonym(const std::string& item) {
  const auto bar = item.find("||");
  if (bar == std::string::npos) return {};
  return {.value = item.substr(0, bar), .text = item.substr(bar + 2)};
}

std::string Picture(const std::string& programFolder, const char* name) {
  return "file:///" + programFolder + "/ui/" + name;
}

std::string HiddenPictures(const std::string& programFolder) {
  constexpr std::array kNames{"btnok_off.gif", "btnok_over.gif", "btnok_on.gif"};
  std::string html = "<div style='display:none;'>";
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    html += "<img id='img_btnOK" + std::to_string(i) + "' width='1' height='1' src='" +
            base::Escaped(Picture(programFolder, kNames.at(i))) + "'>";
  }
  return html + "</div>";
}

std::string Row(int number, const Suggestion& suggestion) {
  const std::string id = "suggest" + std::to_string(number);
  const std::string value = base::Escaped(suggestion.value);
  const std::string clicks = " data-pick='" + id + "' data-open='cmd:suggest:" + value + "'";
  return "<table width='99%'><td width='20'><input type='radio' name='suggest' id='" + id + "' value='" +
         value + "'" + clicks + "></td><td width='95%'><a style='text-decoration: none;' href='#'" + clicks +
         "><font style='font-family: Arial; font-size: 13px; color: #000000; line-height:150%;'>" +
         base::Escaped(suggestion.text) + "</font></a></td></table>";
}

std::string OkButton(const std::string& programFolder) {
  return "<input type='image' id='btnOK' name='btnOK' src='" +
         base::Escaped(Picture(programFolder, "btnok_off.gif")) + "' data-faces='img_btnOK' data-send>";
}

}  // namespace

std::string GetSuggestParameter(const std::string& item) {
  constexpr std::size_t kTokens = 4;
  auto tokens = base::Split(item, " ");
  tokens.resize(std::max(tokens.size(), kTokens));
  for (const auto& pair : kSpeechPairs) {
    if (Holds(tokens[1], pair.first) && Holds(tokens[3], pair.second)) return tokens[0] + "," + pair.code;
  }
  return "";
}

std::vector<Suggestion> ReadSuggestions(const std::string& kind, const std::string& list,
                                        const std::string& separator) {
  std::vector<Suggestion> suggestions;
  for (const auto& piece : base::Split(list, separator)) {
    const std::string item = base::Trim(piece);
    if (item.empty()) continue;
    Suggestion suggestion =
        kind == "SYN" ? ReadSynonym(item) : Suggestion{.value = GetSuggestParameter(item), .text = item};
    if (kind == "SYN" && (suggestion.value.empty() || suggestion.text.empty())) continue;
    suggestions.push_back(std::move(suggestion));
  }
  return suggestions;
}

std::string SuggestPage(const std::string& programFolder, const std::vector<Suggestion>& suggestions) {
  std::string page = BuildPageFrame("HEADER", "YELLOW") + ParchmentBody(programFolder) + "<p>" +
                     HiddenPictures(programFolder) + "<font face='Arial' size='4' style='line-height:150%;'>";
  int number = 0;
  for (const auto& suggestion : suggestions) page += Row(++number, suggestion);
  return page + OkButton(programFolder) + "</p>" + BuildPageFrame("FOOTER", "");
}

}  // namespace marovane
