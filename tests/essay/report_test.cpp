// Reports as whole pages. Each golden page is beside the few lines from which it is made:
//   essay FINALSET TEXT     the essay ("\n" is a line break)
//   ok SID HAVEHTM TEXT     a sentence that passed, in the order of time
//   err SID CODE TEXT       a refused attempt, likewise
// MAROVANE_REWRITE_GOLDEN=1 rewrites the pages, for a look at what a change does to them.
#include "essay/report.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>

#include "base/text.h"
#include "platform/html.h"
#include "platform/run_time_error.h"
#include "tests/support/temp_folder.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

using ::testing::HasSubstr;

EssayReport EmptyReport() {
  EssayReport report{};
  report.essay.finalSet = "N";
  report.imageRoot = "http://school/_images/";
  report.outlineOf = [](const std::string& code) { return code == "AG01" ? "動詞要加 s" : ""; };
  return report;
}

EssayReport ReportFrom(const std::string& lines) {
  EssayReport report = EmptyReport();
  std::istringstream input(lines);
  std::string line;
  for (int id = 1; std::getline(input, line); ++id) {
    std::istringstream words(line);
    std::string kind, first, second, text;
    words >> kind >> first;
    if (kind != "essay") words >> second;
    std::getline(words >> std::ws, text);
    if (kind == "essay") {
      report.essay.finalSet = first;
      report.essay.orgEssay = base::Replace(text, "\\n", "\r\n");
    } else if (kind == "ok") {
      report.okSentences.push_back(
          {.sId = std::to_string(id), .sentence = text, .sDate = {}, .essaySId = first, .haveHtm = second});
    } else if (kind == "err") {
      report.errSentences.push_back(
          {.id = std::to_string(id), .sentence = text, .errcode = second, .sDate = {}, .essaySId = first});
    }
  }
  return report;
}

std::string PageFrom(const std::string& lines) { return BuildEssayReport(ReportFrom(lines)).Markup(); }

class GoldenReport : public ::testing::TestWithParam<const char*> {};

TEST_P(GoldenReport, IsBuiltFromItsLines) {
  const std::string golden = std::string(GOLDEN_FOLDER "/") + GetParam() + ".html";
  const std::string lines = ReadFile(std::string(GOLDEN_FOLDER "/") + GetParam() + ".txt");
  const std::string page = base::Replace(PageFrom(lines), PageActions().Markup(), "");
  if (std::getenv("MAROVANE_REWRITE_GOLDEN") != nullptr) {
    WriteFile(golden, page);
    FAIL() << golden << " was written; look at it";
  }
  EXPECT_EQ(page, ReadFile(golden));
}

INSTANTIATE_TEST_SUITE_P(Pages, GoldenReport,
                         ::testing::Values("finished", "warning", "corrected_once", "corrected_twice",
                                           "broken"),
                         [](const auto& info) { return std::string(info.param); });

TEST(EssayReport, CountsAndCutsAsTheWalkDid) {
  const struct {
    const char* lines;
    std::vector<const char*> parts;
  } kCases[] = {
      // Words are the pieces between blanks.
      {"essay N x\nok 1 N He  goes , home.\nok 2 N Yes.", {"全文共 2 個句子，共計 6 個字，犯錯 0 次"}},
      {"essay A He go.\nerr 1 AG01 *He go* .\nerr 1 AG01 *He go* .\nerr 1 XX99 *He go* .",
       {"犯錯 3 次", "第3次錯誤："}},
      {"essay A I\\n run. We left at 5 p.m.\\n\nok 1 N I run.", {"全文共 2 個句子", "We left at 5 p.m."}},
  };
  for (const auto& c : kCases) {
    const std::string text = HtmlToText(PageFrom(c.lines));
    for (const char* part : c.parts) EXPECT_THAT(text, HasSubstr(part)) << c.lines;
  }
}

TEST(EssayReport, RefusesMoreSentencesThanAnEssayMayHave) {
  EssayReport report = EmptyReport();
  const auto add = [&](int number) {
    report.okSentences.push_back(
        {.sId = "1", .sentence = "I.", .sDate = {}, .essaySId = std::to_string(number)});
  };
  for (int i = 0; i < 1000; ++i) add(i);
  add(999);
  EXPECT_NO_THROW(BuildEssayReport(report)) << "a second attempt at a sentence is no other sentence";
  add(1000);
  EXPECT_THROW(BuildEssayReport(report), RunTimeError);
}

}  // namespace

}  // namespace marovane
