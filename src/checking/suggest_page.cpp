#include "checking/suggest_page.h"

#include <array>

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

base::Html Picture(const std::string& programFolder, const char* name) {
  return base::Fill("file:///{}/ui/{}", programFolder, name);
}

base::Html HiddenPictures(const std::string& programFolder) {
  base::Html pictures;
  int number = 0;
  for (const char* name : {"btnok_off.gif", "btnok_over.gif", "btnok_on.gif"}) {
    pictures.Add("<img id='img_btnOK{}' width='1' height='1' src='{}'>", number++,
                 Picture(programFolder, name));
  }
  return base::Fill("<div style='display:none;'>{}</div>", pictures);
}

constexpr char kRow[] =
    "<table width='99%'><td width='20'><input type='radio' name='suggest' id='suggest{0}' value='{1}' "
    "data-pick='suggest{0}' data-open='cmd:suggest:{1}'></td><td width='95%'>"
    "<a style='text-decoration: none;' href='#' data-pick='suggest{0}' data-open='cmd:suggest:{1}'>"
    "<font style='font-family: Arial; font-size: 13px; color: #000000; line-height:150%;'>{2}</font></a>"
    "</td></table>";

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

base::Html SuggestPage(const std::string& programFolder, const std::vector<Suggestion>& suggestions) {
  base::Html page = BeginParchmentPage(programFolder);
  page.Add("<p>{}<font face='Arial' size='4' style='line-height:150%;'>", HiddenPictures(programFolder));
  int number = 0;
  for (const auto& [value, text] : suggestions) page.Add(kRow, ++number, value, text);
  page.Add("<input type='image' id='btnOK' name='btnOK' src='{}' data-faces='img_btnOK' data-send></p>{}",
           Picture(programFolder, "btnok_off.gif"), BuildPageFrame("FOOTER", ""));
  return page;
}

}  // namespace marovane
