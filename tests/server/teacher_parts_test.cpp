// Lists of pupils and sentences of essays: the parts of the teachers' site without a server.
#include <gmock/gmock.h>

#include "base/cp950.h"
#include "server/teacher/essay_marks.h"
#include "server/teacher/roster.h"
#include "tests/server/running_server.h"

namespace server {
namespace {

using namespace ::testing;

/// Each pupil as "account|name|password", and after them the errors.
std::vector<std::string> Read(const std::string& bytes) {
  const Roster roster = ReadRoster(bytes);
  std::vector<std::string> lines;
  for (const RosterEntry& each : roster.entries) {
    lines.push_back(each.account + "|" + each.name + "|" + each.password);
  }
  lines.insert(lines.end(), roster.errors.begin(), roster.errors.end());
  return lines;
}

TEST(Roster, ReadsWhatSpreadsheetsSave) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"S1,王小明,abcd", {"S1|王小明|abcd"}},
      {base::ToCp950("帳號,姓名\r\nS1,許功蓋\r\n"),
       {"S1|許功蓋|"}},  // trail bytes of 功 and 蓋 are "\\" and "\\"
      {"\xEF\xBB\xBF帳號,姓名,密碼\nS1,王,\n\n,,\nS2,李,wxyz\n", {"S1|王|", "S2|李|wxyz"}},
      {"S-1 2 , 王 , abcd ", {"S12|王|abcd"}},
      {"S1,\"Wang, \"\"Ming\"\"\",\"a,b\"\"c\"", {"S1|Wang, \"Ming\"|a,b\"c"}},
      {"account,name\r\nS1,A?B", {"S1|A?B|"}},
      {"帳號1,王", {"第 1 行：帳號「帳號1」只能用英文字母、數字、「.」和「_」，最多 32 個字"}},
      {"", {"第 1 行：檔案裡沒有學生"}},
      {"帳號,姓名\n", {"第 1 行：檔案裡沒有學生"}},
      {"S1,王\nS1,李\n", {"S1|王|", "第 2 行：帳號「S1」在檔案裡出現兩次"}},
      {"S1,\nS2,王,abc\nS4,李,密碼\nS3,a,b,c,d",
       {"第 1 行：沒有姓名", "第 2 行：密碼要有 4 至 64 個英文字母、數字或符號",
        "第 3 行：密碼要有 4 至 64 個英文字母、數字或符號",
        "第 4 行：要有帳號、姓名、密碼 2 至 3 欄，這一行有 5 欄"}},
      {"S1,\"two\nlines\"\nS2,\"open",
       {"第 1 行：有無法辨識的文字，請將檔案存成 UTF-8 或 Big5 的 CSV", "第 3 行：引號「\"」沒有結束"}},
      {"S1,\xFF\xFE\nS2,\x81",
       {"第 1 行：有無法辨識的文字，請將檔案存成 UTF-8 或 Big5 的 CSV",
        "第 2 行：有無法辨識的文字，請將檔案存成 UTF-8 或 Big5 的 CSV"}},
      {"S1," + std::string(41, 'x'), {"第 1 行：姓名太長，最多 40 個字"}},
  };
  for (const auto& [bytes, lines] : cases) EXPECT_EQ(Read(bytes), lines) << bytes;
}

TEST(Roster, IsBounded) {
  std::string many;
  for (int i = 0; i < 201; ++i) many += "S" + std::to_string(i) + ",x\n";
  EXPECT_THAT(ReadRoster(many).errors, ElementsAre("第 1 行：一次最多匯入 200 位學生"));
  EXPECT_THAT(ReadRoster(std::string(5000, '\"')).errors, SizeIs(1));
  std::string wrong;
  for (int i = 0; i < 500; ++i) wrong += "/,x\n";
  EXPECT_THAT(ReadRoster(wrong).errors, SizeIs(20)) << "as many as somebody reads";
}

TEST(EssaySentences, AreThoseOfThePupilWithParagraphsAndTheRest) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"At 3 pm. Then we left. Mrs. Wu came.", {"¶At 3 pm. Then we left.", "Mrs. Wu came."}},
      {"My day\r\nI got up\r\n at six. \r\n\r\nI ran!", {"¶My dayI got up at six.", "¶I ran!"}},
      {"First.\r\nSecond. Third.\n\nFourth", {"¶First.", "¶Second.", "Third.", "¶Fourth"}},
      {"", {}},
      {" \r\n ", {}},
      {"...", {"¶.", ".", "."}},
      {"\n許\t’.\ta", {"¶許\t’.", "a"}},
  };
  for (const auto& [essay, expected] : cases) {
    std::vector<std::string> found;
    for (const EssaySentence& each : SentencesOf(essay)) {
      found.push_back((each.beginsParagraph ? "¶" : "") + each.text);
    }
    EXPECT_EQ(found, expected) << essay;
  }
}

TEST(EssayMarks, SurroundTheFaultsAndSurviveOddSpans) {
  const SharedEngine engine([] {
    return [](std::string_view sentence) {
      tolvex::Judgement judgement;
      judgement.faults = {
          {"A", tolvex::Verdict::kErrors, {3, 7}, "<wrong>", {"go", ""}},
          {"B", tolvex::Verdict::kErrors, {5, 9}, "overlaps", {}},
          {"C", tolvex::Verdict::kWatch, {sentence.size(), sentence.size()}, "missing", {"!"}},
          {"D", tolvex::Verdict::kErrors, {900, 901}, "outside", {}},
          {"E", tolvex::Verdict::kErrors, {8, 7}, "backwards", {}},
      };
      return judgement;
    };
  });
  const std::string marked = MarkedEssay("He goes’ home", engine).Markup();
  EXPECT_THAT(marked, HasSubstr("<div>He <mark>goes</mark>&#39; home<mark>‸</mark></div>"));
  EXPECT_THAT(marked, HasSubstr("<li>&lt;wrong&gt; <span class=\"better\">建議：go、（刪去）</span></li>"));
}

TEST(EssayMarks, LeaveTheTextWhenThereIsNoEngine) {
  const SharedEngine engine([]() -> SharedEngine::Judge { throw std::runtime_error("no tables"); });
  const std::string marked = MarkedEssay("One. Two.", engine).Markup();
  EXPECT_THAT(marked, HasSubstr("檢查引擎目前無法使用"));
  EXPECT_THAT(marked, HasSubstr("<div>One.</div><ul></ul>"));
  EXPECT_THAT(marked, HasSubstr("<div>Two.</div><ul></ul>"));
}

TEST(EssayMarks, AreMadeForABoundedNumberOfSentences) {
  int asked = 0;
  const SharedEngine engine([&asked] {
    return [&asked](std::string_view) {
      ++asked;
      return tolvex::Judgement{};
    };
  });
  std::string essay;
  for (int i = 0; i < 1000; ++i) essay += "Again. ";
  EXPECT_THAT(MarkedEssay(essay + std::string(5000, 'x'), engine).Markup(),
              HasSubstr(std::string(5000, 'x')));
  EXPECT_EQ(asked, 100);
}

}  // namespace
}  // namespace server
