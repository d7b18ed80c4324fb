// The page that shows a learner what the engine found.
#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/html.h"
#include "base/text.h"
#include "base/utf8.h"
#include "engine/tolvex.h"

namespace tolvex {
namespace {

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="zh-Hant">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=big5">
<title>句子解析結果</title>
<style>
body { background: #FAF4ED; color: #3A2F26; margin: 0; padding: 18px 22px; font-family: Arial, "Noto Sans CJK TC",
  "Microsoft JhengHei", sans-serif; font-size: 15px; line-height: 1.65; }
h1 { color: #C96F38; font-size: 19px; margin: 0 0 10px; }
h2 { color: #C96F38; font-size: 16px; margin: 0 0 6px; }
.sentence { font-family: Cambria, Caladea, serif; font-size: 19px; background: #FFFDF9; border: 1px solid #EAD9C6;
  border-radius: 8px; padding: 10px 14px; margin: 0 0 16px; overflow-wrap: anywhere; }
.fault { border-left: 4px solid #C96F38; background: #FFFDF9; border-radius: 0 8px 8px 0; padding: 8px 14px;
  margin: 0 0 14px; }
.watch { border-left-color: #E0B84C; }
.watch h2 { color: #A07A14; }
mark { background: #FBD9C4; color: #B3261E; border-radius: 3px; padding: 0 3px; }
.tip { border-left-color: #2E7D4F; margin-top: 14px; }
.tip h2 { color: #2E7D4F; }
.watch mark, mark.soft { background: #FBEBB8; color: #7A5C00; }
.good { color: #2E7D4F; font-weight: bold; }
.label { color: #8A6D52; }
.old { text-decoration: line-through; color: #B3261E; }
.english { font-family: Cambria, Caladea, serif; font-size: 17px; }
p { margin: 4px 0; }
</style>
</head>
<body>
)";

std::string Escape(std::string_view text) {
  std::string escaped;
  for (std::size_t at = 0; at < text.size();) {
    const base::Utf8Character c = base::NextUtf8(text, at);
    const std::string_view entity = base::EntityOf(text[at]);
    const bool control = c.codePoint < 0x20 || c.codePoint == 0x7F;
    escaped += !c.valid ? "?" : control ? " " : !entity.empty() ? entity : text.substr(at, c.length);
    at += c.length;
  }
  return escaped;
}

std::string_view Cut(std::string_view sentence, Span span) {
  const std::size_t begin = std::min(span.begin, sentence.size());
  return sentence.substr(begin, std::clamp(span.end, begin, sentence.size()) - begin);
}

std::string Marked(std::string_view text, Verdict level) {
  const std::string_view shown = text.empty() ? "^" : text;
  return fmt::format("<mark{}>{}</mark>", level == Verdict::kWatch ? " class=\"soft\"" : "", Escape(shown));
}

std::string MarkedSentence(std::string_view sentence, std::vector<Fault> faults) {
  std::sort(faults.begin(), faults.end(),
            [](const Fault& a, const Fault& b) { return a.span.begin < b.span.begin; });
  std::string html;
  std::size_t at = 0;
  for (const Fault& fault : faults) {
    if (fault.span.begin < at) continue;
    html += Escape(Cut(sentence, {at, fault.span.begin}));
    html += Marked(Cut(sentence, fault.span), fault.level);
    at = fault.span.end;
  }
  return html + Escape(Cut(sentence, {at, sentence.size()}));
}

std::string English(std::string_view text) {
  return fmt::format("<span class=\"english\">{}</span>", Escape(text));
}

std::string HowToWrite(std::string_view written, const std::vector<std::string>& corrections) {
  if (corrections.empty()) return {};
  if (corrections[0].empty()) {
    return fmt::format(
        "<p><span class=\"label\">怎麼改：</span>去掉 <span class=\"english old\">{}</span></p>\n",
        Escape(written));
  }
  std::string choices;
  for (const std::string& correction : corrections) {
    choices += (choices.empty() ? "" : "　或　") + English(correction);
  }
  if (written.empty()) return fmt::format("<p><span class=\"label\">怎麼改：</span>加上 {}</p>\n", choices);
  return fmt::format(
      "<p><span class=\"label\">怎麼改：</span><span class=\"english old\">{}</span> &rarr; {}</p>\n",
      Escape(written), choices);
}

std::string FaultBlock(std::string_view sentence, const Fault& fault, std::size_t number) {
  const bool watch = fault.level == Verdict::kWatch;
  const std::string_view written = Cut(sentence, fault.span);
  std::string where;
  if (!written.empty() && written.size() < sentence.size()) {
    where = fmt::format("<p><span class=\"label\">在哪裡：</span><mark>{}</mark></p>\n", Escape(written));
  }
  return fmt::format(
      "<div class=\"fault{}\">\n<h2>{} {}</h2>\n{}<p><span class=\"label\">為什麼：</span>{}</p>\n{}</div>\n",
      watch ? " watch" : "", watch ? "請留意" : "錯誤", number, where, Escape(fault.message),
      HowToWrite(written, fault.corrections));
}

// "rain 名詞 heavy 形容詞": the better partner, and the word that it goes with.
std::string Partner(std::string_view item) {
  const auto tokens = base::Split(item, " ");
  if (tokens.size() < 4) return {};
  return fmt::format("{} 可以搭配 {}", English(tokens[0]), English(tokens[2]));
}

// "query||text to show"
std::string CloserWord(std::string_view item) {
  const auto bar = item.find("||");
  return bar == std::string_view::npos ? "" : English(item.substr(bar + 2));
}

// A right sentence may still have a stronger word; nothing is shown when the lists are "0" or empty.
std::string SuggestionBlock(const Judgement& judgement) {
  std::string lines;
  const auto add = [&](const std::string& line) {
    if (!line.empty()) lines += fmt::format("<p>{}</p>\n", line);
  };
  for (const auto& item : base::Split(judgement.col_suggestion, ",")) add(Partner(item));
  for (const auto& item : base::Split(judgement.syn_suggestion, ",")) add(CloserWord(item));
  if (lines.empty()) return {};
  return fmt::format("<div class=\"fault tip\">\n<h2>還可以寫得更道地</h2>\n{}</div>\n", lines);
}

std::string Praise(const Judgement& judgement) {
  return fmt::format("<p class=\"good\">寫得很好！本句子沒有發現錯誤。</p>\n{}", SuggestionBlock(judgement));
}

std::string FaultBlocks(std::string_view sentence, const Judgement& judgement) {
  std::string html;
  for (std::size_t i = 0; i < judgement.faults.size(); ++i) {
    html += FaultBlock(sentence, judgement.faults[i], i + 1);
  }
  if (!judgement.corrected.empty() && judgement.corrected != sentence) {
    html += fmt::format("<h2>整句可以這樣寫</h2>\n<div class=\"sentence good\">{}</div>\n",
                        Escape(judgement.corrected));
  }
  return html;
}

}  // namespace

std::string ResultPage(std::string_view sentence, const Judgement& judgement) {
  const bool right = judgement.verdict == Verdict::kRight;
  return ResultPageOf(fmt::format("<h1>句子解析結果</h1>\n<div class=\"sentence\">{}</div>\n{}",
                                  right ? Escape(sentence) : MarkedSentence(sentence, judgement.faults),
                                  right ? Praise(judgement) : FaultBlocks(sentence, judgement)));
}

std::string ResultPageOf(std::string_view body) { return fmt::format("{}{}</body>\n</html>\n", kHead, body); }

}  // namespace tolvex
