#include "essay/report.h"

#include <algorithm>
#include <unordered_map>

#include "base/digest.h"
#include "base/text.h"
#include "essay/text_rules.h"
#include "platform/run_time_error.h"
#include "protocol/sentences.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr const char* kUndecided = "#NONE";
constexpr const char* kRight = "#008000";
constexpr const char* kCorrected = "#FF0000";
constexpr const char* kWarned = "#FF6600";
constexpr const char* kBrokeOff = "#FF0066";
constexpr const char* kNotReached = "#B0B0B0";

constexpr const char* kBreakNote = "未修改正確即中斷\r\n";

// One sentence of the report.
struct Entry {
  std::string essaySId;
  std::string colour = kUndecided;
  std::string haveHtm = "N";
  std::string sentence;
};

using Attempts = std::vector<const ErrSentence*>;

// What makes two forms of a sentence the same: the marks of the engine and the blanks do not count.
std::string KeyOf(const std::string& sentence) {
  return base::Replace(base::Replace(sentence, "*", ""), " ", "");
}

base::Html Image(const EssayReport& report, const char* name, const base::Html& attributes = {}) {
  return base::Fill("<img src='{}{}' border='0'{}>", report.imageRoot, name, attributes);
}

std::vector<Entry> FinishedEntries(const EssayReport& report) {
  std::vector<Entry> entries;
  for (const auto& row : report.okSentences) {
    // Of a sentence that was corrected after a warning the last form counts.
    if (!entries.empty() && entries.back().essaySId == row.essaySId) entries.pop_back();
    entries.push_back({row.essaySId, kUndecided, row.haveHtm, row.sentence});
  }
  return entries;
}

// The first row of each sentence, by its key.
template <class Row>
using FirstRows = std::unordered_map<std::string, const Row*>;

template <class Row>
FirstRows<Row> IndexByKey(const std::vector<Row>& rows) {
  FirstRows<Row> index;
  for (const Row& row : rows) index.try_emplace(KeyOf(row.sentence), &row);
  return index;
}

template <class Row>
const Row* FindSame(const FirstRows<Row>& rows, const std::string& sentence) {
  const auto found = rows.find(KeyOf(sentence));
  return found == rows.end() ? nullptr : found->second;
}

// The user corrected a faulty sentence when there is a right one under the same id.
bool IsCorrected(const EssayReport& report, const std::string& essaySId) {
  return std::ranges::find(report.okSentences, essaySId, &OkSentence::essaySId) != report.okSentences.end();
}

Entry BrokenEntry(const EssayReport& report, const std::string& sentence, const OkSentence* ok,
                  const ErrSentence* err) {
  Entry entry{.essaySId = "", .colour = kNotReached, .haveHtm = "N", .sentence = sentence};
  if (ok != nullptr) entry.essaySId = ok->essaySId;
  if (err != nullptr) entry.essaySId = err->essaySId;
  if (err != nullptr) {
    entry.colour = ok != nullptr || IsCorrected(report, err->essaySId) ? kCorrected : kBrokeOff;
  } else if (ok != nullptr) {
    entry.colour = kRight;
  }
  return entry;
}

// The corrected text of an essay that broke off was never stored, so its original is read again.
std::vector<Entry> BrokenEntries(const EssayReport& report) {
  auto okByTime = report.okSentences;
  std::ranges::sort(okByTime, {}, &OkSentence::sId);
  const auto okRows = IndexByKey(okByTime);
  const auto errRows = IndexByKey(report.errSentences);
  std::vector<Entry> entries;
  for (const auto& sentence : protocol::CutSentences(protocol::RunningText(report.essay.orgEssay))) {
    entries.push_back(BrokenEntry(report, sentence, FindSame(okRows, sentence), FindSame(errRows, sentence)));
  }
  return entries;
}

bool IsBroken(const EssayReport& report) { return report.essay.finalSet == "A"; }

Attempts AttemptsAt(const EssayReport& report, const std::string& essaySId) {
  Attempts attempts;
  for (const auto& row : report.errSentences) {
    if (row.essaySId == essaySId) attempts.push_back(&row);
  }
  return attempts;
}

base::Html RightSentence(const Entry& entry, const std::string& sentence) {
  return base::Fill("<span style='color:{};font-weight:bold;'>{}</span>\r\n",
                    entry.colour == kUndecided ? kRight : entry.colour, sentence);
}

base::Html WarnedSentence(const EssayReport& report, const Entry& entry, const std::string& sentence) {
  return base::Fill(
      "<span class='plain' style='color:{};font-weight:bold;text-decoration: underline;cursor:pointer;' "
      " title ='需注意句子，點一下可查看詳細批改內容'  data-go='cmd:show:{}'"
      " alt='查看詳細分析結果' title='查看詳細分析結果'>{}{}</span>\r\n",
      entry.colour == kUndecided ? kWarned : entry.colour, base::SlotMd5(KeyOf(sentence)), sentence,
      Image(report, "ico_mrv_ext.gif"));
}

base::Html FaultySentence(const EssayReport& report, const Entry& entry, const std::string& sentence,
                          std::size_t attempts, const std::string& note) {
  return base::Fill(
      "<span class='plain' style='color:{};font-weight:bold;text-decoration: underline;cursor:pointer;' "
      " title ='修正過{}次，{}點一下可查看詳細批改內容'  data-toggle='err{}'>{}{}</span>\r\n",
      entry.colour, attempts, note, entry.essaySId, sentence, Image(report, "ico_mrv_err.gif"));
}

base::Html CloseIcon(const EssayReport& report, const Entry& entry, const char* name, int bottom) {
  return base::Fill("<p align='right' style='margin-top:0px;margin-bottom:{}px;'>{}</p>", bottom,
                    Image(report, name,
                          base::Fill(" style='cursor:pointer;' alt='關閉' title='關閉'  data-toggle='err{}'",
                                     entry.essaySId)));
}

// The engine's form of a sentence as a reader knows it.
std::string CleanAttempt(const std::string& stored) {
  std::string text = PlainApostrophes(base::Trim(stored));
  for (const char* mark : {".", ",", "?", ";"}) text = base::Replace(text, std::string(" ") + mark, mark);
  return base::Replace(text, "*", "");
}

base::Html Outline(const EssayReport& report, const std::string& errcode) {
  const std::string outline = report.outlineOf(errcode);
  if (outline.empty()) return {};
  return base::Fill(
      "<ul style='line-height:100%; margin-top:5px; margin-bottom:5px;'>"
      "<font style='font-family: Arial; font-size: 13px; color: #008000;'>{}\r\n</font></ul>",
      outline);
}

base::Html AttemptItem(const EssayReport& report, const ErrSentence& attempt, int number) {
  const std::string text = CleanAttempt(attempt.sentence);
  return base::Fill(
      "<li style='line-height:100%; margin-top:10px; margin-bottom:5px;'>"
      "<font style='font-family: Arial; font-size: 13px; color: #000000;'>第{}次錯誤：\r\n</font>"
      "<a href='cmd:show:{}' alt='查看詳細分析結果' title='查看詳細分析結果'>\r\n"
      "<font class='blue' style='font-family: Cambria; font-size: 14px; font-weight:bold; color: #FF0000;' >"
      "\r\n{}{}\r\n</font>\r\n</a>\r\n{}</li>",
      number, base::SlotMd5(base::Replace(text, " ", "")), text, Image(report, "ico_mrv_hint.gif"),
      Outline(report, attempt.errcode));
}

base::Html AttemptsBlock(const EssayReport& report, const Entry& entry, const Attempts& attempts,
                         const std::string& note) {
  base::Html block = base::Fill(
      "<div align='left' id='err{}' style='width:95%; border: 1px solid #808080; background-color:#FFFFFF; "
      "margin-left:20px; margin-top:10px; margin-bottom:10px; padding:10px; display:none;'>"
      "<font style='font-size:15px;color:#FF0000;'>",
      entry.essaySId);
  if (!note.empty()) block.Add("{}&nbsp;{}", Image(report, "mrv_icon_warning.gif"), note);
  block.Add("</font>{}\r\n", CloseIcon(report, entry, "ico_mrv_close.gif", -10));
  int number = 0;
  for (const auto* attempt : attempts) block += AttemptItem(report, *attempt, ++number);
  if (attempts.size() >= 2) block += CloseIcon(report, entry, "ico_mrv_closeup.gif", 0);
  block.Add("</div>");
  return block;
}

base::Html FaultyWithAttempts(const EssayReport& report, Entry entry, const std::string& sentence,
                              const Attempts& attempts) {
  if (entry.colour == kUndecided) entry.colour = kCorrected;
  const bool isBreak = entry.colour == kBrokeOff;
  const std::string note = isBreak ? kBreakNote : "";
  base::Html text = FaultySentence(report, entry, sentence, attempts.size(), note);
  text += AttemptsBlock(report, entry, attempts, note);
  if (isBreak) {
    text.Add("<span style='margin-right:-150px;'>{}</span>",
             Image(report, "ico_sys_break_point_flash.gif",
                   base::Literal(" alt='系統批改到此處被中斷' title='系統批改到此處被中斷'")));
  }
  return text;
}

base::Html WriteEntry(const EssayReport& report, const Entry& entry) {
  const std::string sentence = PlainApostrophes(entry.sentence);
  const Attempts attempts = AttemptsAt(report, entry.essaySId);
  if (!attempts.empty()) return FaultyWithAttempts(report, entry, sentence, attempts);
  if (entry.haveHtm == "N") return RightSentence(entry, sentence);
  if (entry.haveHtm == "2") return WarnedSentence(report, entry, sentence);
  return {};
}

base::Html Head() {
  return base::Fill(
      "{}{}<body scroll='auto'><table width='100%' border='0'>"
      "<td width='100%' style='font-family: Cambria; font-size: 15px; color: #000000; line-height:150%;'>",
      BuildPageFrame("HEADER", "#FFFFCC"), PageActions());
}

base::Html Count(const char* before, std::size_t number, const char* colour, const char* unit) {
  return base::Fill(
      "{} <font style='font-family:Cambria;font-size:24px;font-weight:bold;color:{};'>{}</font> {}", before,
      colour, number, unit);
}

base::Html Foot(const EssayReport& report, std::size_t sentences, std::size_t words) {
  base::Html foot = base::Literal(
      "</td>\r\n</table>\r\n"
      "<br /><table width='100%' height='1' border='0'><td width='100%' height='1' "
      "bgcolor='#CCCCCC'></td></table>");
  if (IsBroken(report)) {
    foot.Add(
        "<p align='center' style='margin-top:5px;margin-bottom:0px;font-size:13px;color:#FF0066;'>"
        "{}&nbsp;這篇短文批改過程中被中斷，批改分析僅分析至中斷點</p>",
        Image(report, "mrv_icon_warning.gif"));
  }
  foot.Add(
      "<p align='center' style='margin-top:5px;margin-bottom:0px;font-size:13px;color:#008000;'>{}{}{}</p>{}",
      Count("全文共", sentences, "#0000FF", "個句子，"), Count("共計", words, "#0000FF", "個字，"),
      Count("犯錯", report.errSentences.size(), "#FF0000", "次"), BuildPageFrame("FOOTER", ""));
  return foot;
}

}  // namespace

base::Html BuildEssayReport(const EssayReport& report) {
  const auto entries = IsBroken(report) ? BrokenEntries(report) : FinishedEntries(report);
  if (entries.size() > kMostSentences) throw RunTimeError("短文超過 1000 個句子，無法顯示分析結果");
  std::size_t words = 0;
  base::Html page = Head();
  for (const auto& entry : entries) {
    words += base::Split(entry.sentence, " ").size();
    page += WriteEntry(report, entry);
  }
  page += Foot(report, entries.size(), words);
  return page;
}

}  // namespace marovane
