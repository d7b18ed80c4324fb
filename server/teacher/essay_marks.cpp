#include "server/teacher/essay_marks.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/html.h"
#include "base/text.h"

namespace marovane {

using base::Fill;
using base::Html;

namespace {

constexpr std::size_t kMostJudged = 100;
constexpr std::size_t kLongestJudged = 2000;
constexpr std::array<std::string_view, 7> kAbbreviations = {"Mr.",  "Mrs.", "Dr.", "a.m.",
                                                            "p.m.", "A.M.", "P.M."};

bool IsAbbreviation(std::string_view textUpToPoint) {
  const bool isInner = textUpToPoint.ends_with(" a.") || textUpToPoint.ends_with(" p.") ||
                       textUpToPoint.ends_with(" A.") || textUpToPoint.ends_with(" P.");
  return isInner || std::any_of(kAbbreviations.begin(), kAbbreviations.end(),
                                [&](std::string_view word) { return textUpToPoint.ends_with(word); });
}

bool EndsSentence(std::string_view essay, std::size_t at) {
  const char sign = essay[at];
  if (sign == '?' || sign == '!' || sign == '\r' || sign == '\n') return true;
  return sign == '.' && !IsAbbreviation(essay.substr(0, at + 1));
}

std::optional<tolvex::Judgement> Judge(const SharedEngine& engine, std::string_view sentence) try {
  return engine.Ask(sentence);
} catch (const std::exception&) {
  return std::nullopt;  // why was told when it was loaded
}

/// The sentence with its faulty parts marked. Of two that overlap the first one counts.
Html WithMarks(std::string_view sentence, const tolvex::Judgement& judgement) {
  std::vector<tolvex::Span> spans;
  for (const tolvex::Fault& fault : judgement.faults) spans.push_back(fault.span);
  std::sort(spans.begin(), spans.end(), [](const auto& a, const auto& b) { return a.begin < b.begin; });
  Html marked;
  std::size_t done = 0;
  for (const tolvex::Span& span : spans) {
    if (span.begin < done || span.end < span.begin || span.end > sentence.size()) continue;
    const std::string_view faulty = sentence.substr(span.begin, span.end - span.begin);
    marked +=
        Fill("{}<mark>{}</mark>", sentence.substr(done, span.begin - done), faulty.empty() ? "‸" : faulty);
    done = span.end;
  }
  marked += Fill("{}", sentence.substr(done));
  return marked;
}

Html Note(const tolvex::Fault& fault) {
  std::string corrections;
  for (const std::string& correction : fault.corrections) {
    corrections += (corrections.empty() ? "" : "、") + (correction.empty() ? "（刪去）" : correction);
  }
  Html note = Fill("<li>{}", fault.message);
  if (!corrections.empty()) note += Fill(R"( <span class="better">建議：{}</span>)", corrections);
  note += Fill("</li>");
  return note;
}

Html Row(const EssaySentence& sentence, const Html& text, const Html& notes) {
  return Fill(R"(<li class="{}"><div>{}</div><ul>{}</ul></li>
)",
              sentence.beginsParagraph ? "first" : "next", text, notes);
}

Html JudgedRow(const EssaySentence& sentence, const tolvex::Judgement& judgement) {
  Html notes;
  for (const tolvex::Fault& fault : judgement.faults) notes += Note(fault);
  if (notes.IsEmpty()) notes = Fill(R"(<li class="right">沒有發現錯誤</li>)");
  return Row(sentence, WithMarks(sentence.text, judgement), notes);
}

}  // namespace

std::vector<EssaySentence> SentencesOf(std::string_view essay) {
  std::vector<EssaySentence> sentences;
  bool beginsParagraph = true;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < essay.size(); ++at) {
    if (!EndsSentence(essay, at) && at + 1 < essay.size()) continue;
    std::string text = base::Trim(essay.substr(begin, at + 1 - begin), base::kWhiteSpace);
    if (!text.empty()) {
      sentences.push_back({std::move(text), beginsParagraph});
      beginsParagraph = false;
    }
    beginsParagraph = beginsParagraph || essay[at] == '\n';
    begin = at + 1;
  }
  return sentences;
}

Html MarkedEssay(std::string_view essay, const SharedEngine& engine) {
  const auto sentences = SentencesOf(base::Replace(essay, "’", "'"));
  Html rows;
  std::size_t judged = 0;
  bool isUsable = true;
  for (const EssaySentence& sentence : sentences) {
    const bool isWanted = isUsable && judged < kMostJudged && sentence.text.size() <= kLongestJudged;
    const auto judgement = isWanted ? Judge(engine, sentence.text) : std::nullopt;
    judged += judgement ? 1 : 0;
    isUsable = isUsable && (!isWanted || judgement);
    rows += judgement ? JudgedRow(sentence, *judgement) : Row(sentence, Fill("{}", sentence.text), Html());
  }
  Html marked = isUsable ? Html() : Fill(R"(<p class="error">檢查引擎目前無法使用，先顯示原文。</p>)");
  marked += Fill(R"(<ol class="essay">
{}</ol>)",
                 rows);
  return marked;
}

}  // namespace marovane
