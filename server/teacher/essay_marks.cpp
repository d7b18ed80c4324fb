#include "server/teacher/essay_marks.h"

#include <algorithm>
#include <optional>

#include "base/html.h"
#include "base/text.h"
#include "protocol/sentences.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

constexpr std::size_t kMostJudged = 100;
constexpr std::size_t kLongestJudged = 2000;

/// Takes a sentence off the front of an essay, which has line ends where the sentence has none.
EssaySentence PopSentence(std::string_view& essay, std::string text) {
  const std::size_t begin = std::min(essay.find_first_not_of(base::kWhiteSpace), essay.size());
  const bool isAfterLineEnd = essay.substr(0, begin).find('\n') != std::string_view::npos;
  std::size_t end = begin;
  for (const char sign : text) end = std::min(essay.find(sign, end), essay.size() - 1) + 1;
  essay.remove_prefix(end);
  return {std::move(text), isAfterLineEnd};
}

std::optional<tolvex::Judgement> Judge(const SharedEngine& engine, std::string_view sentence) try {
  return engine.Ask(sentence);
} catch (const std::exception&) {
  return std::nullopt;  // why was logged when it was loaded
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

Html MarkedRow(const EssaySentence& sentence, const Html& text, const Html& notes) {
  return Fill(R"(<li class="{}"><div>{}</div><ul>{}</ul></li>
)",
              sentence.beginsParagraph ? "first" : "next", text, notes);
}

Html JudgedRow(const EssaySentence& sentence, const tolvex::Judgement& judgement) {
  Html notes;
  for (const tolvex::Fault& fault : judgement.faults) notes += Note(fault);
  if (notes.IsEmpty()) notes = Fill(R"(<li class="right">沒有發現錯誤</li>)");
  return MarkedRow(sentence, WithMarks(sentence.text, judgement), notes);
}

}  // namespace

std::vector<EssaySentence> SentencesOf(std::string_view essay) {
  std::vector<EssaySentence> sentences;
  for (auto& text : protocol::CutSentences(protocol::RunningText(essay))) {
    sentences.push_back(PopSentence(essay, std::move(text)));
  }
  std::string rest = base::Trim(protocol::TidySentence(essay), base::kWhiteSpace);
  if (!rest.empty()) sentences.push_back(PopSentence(essay, std::move(rest)));
  if (!sentences.empty()) sentences[0].beginsParagraph = true;
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
    rows +=
        judgement ? JudgedRow(sentence, *judgement) : MarkedRow(sentence, Fill("{}", sentence.text), Html());
  }
  Html marked = isUsable ? Html() : Fill(R"(<p class="error">檢查引擎目前無法使用，先顯示原文。</p>)");
  marked += Fill(R"(<ol class="essay">
{}</ol>)",
                 rows);
  return marked;
}

}  // namespace server
