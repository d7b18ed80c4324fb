// Reports as whole pages. Each golden page stands beside the few lines from which it is made:
//   essay FINALSET TEXT     the essay ("\n" is a line break)
//   ok SID HAVEHTM TEXT     a sentence that passed, in the order of time
//   err SID CODE TEXT       a refused attempt, likewise
// MAROVANE_REWRITE_GOLDEN=1 rewrites the pages, for a look at what a change does to them.
#include "essay/report.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/text.h"
#include "platform/html.h"
#include "platform/run_time_error.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

using ::testing::HasSubstr;

std::string ReadFile(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

EssayReport EmptyReport() {
  return {.essay = {.essayId = "E1",
                    .workId = "",
                    .quiz = "",
                    .orgEssay = "",
                    .newEssay = "",
                    .finalSet = "N",
                    .sDate = {}},
          .okSentences = {},
          .errSentences = {},
          .imageRoot = "http://school/_images/",
          .outlineOf = [](const std::string& code) { return code == "AG01" ? "動詞要加 s" : ""; }};
}

EssayReport ReportFrom(const std::string& lines) {
  EssayReport report = EmptyReport();
  std::istringstream input(lines);
  std::string line;
  for (int id = 1; std::getline(input, line); ++id) {
    std::istringstream words(line);
    std::string kind;
    std::string first;
    std::string second;
    std::string text;
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
  const std::filesystem::path folder = GOLDEN_FOLDER;
  const std::string page = base::Replace(PageFrom(ReadFile(folder / (std::string(GetParam()) + ".txt"))),
                                         PageActions().Markup(), "");
  const auto golden = folder / (std::string(GetParam()) + ".html");
  if (std::getenv("MAROVANE_REWRITE_GOLDEN") != nullptr) {
    std::ofstream(golden, std::ios::binary) << page;
    FAIL() << golden << " was written; look at it";
  }
  EXPECT_EQ(page, ReadFile(golden));
}

INSTANTIATE_TEST_SUITE_P(Pages, GoldenReport,
                         ::testing::Values("finished", "warning", "corrected_once", "corrected_twice",
                                           "broken"),
                         [](const auto& info) { return std::string(info.param); });

TEST(EssayReport, CountsWordsAsPiecesBetweenBlanks) {
  const std::string text = HtmlToText(PageFrom("essay N x\nok 1 N He  goes , home.\nok 2 N Yes."));
  EXPECT_THAT(text, HasSubstr("全文共 2 個句子，共計 6 個字，犯錯 0 次"));
}

TEST(EssayReport, CountsEveryRefusedAttempt) {
  const std::string text = HtmlToText(
      PageFrom("essay A He go.\nerr 1 AG01 *He go* .\nerr 1 AG01 *He go* .\nerr 1 XX99 *He go* ."));
  EXPECT_THAT(text, HasSubstr("犯錯 3 次"));
  EXPECT_THAT(text, HasSubstr("第3次錯誤："));
}

TEST(EssayReport, ReadsABrokenEssayAsTheWalkDid) {
  const std::string text = HtmlToText(PageFrom("essay A I\\n run. We left at 5 p.m.\\n\nok 1 N I run."));
  EXPECT_THAT(text, HasSubstr("全文共 2 個句子"));
  EXPECT_THAT(text, HasSubstr("We left at 5 p.m."));
}

TEST(EssayReport, RefusesMoreSentencesThanAnEssayMayHave) {
  EssayReport report = EmptyReport();
  report.okSentences.resize(1000, {.sId = "1", .sentence = "I.", .sDate = {}, .essaySId = "1"});
  EXPECT_NO_THROW(BuildEssayReport(report));
  report.okSentences.push_back(report.okSentences.front());
  EXPECT_THROW(BuildEssayReport(report), RunTimeError);
}

}  // namespace

}  // namespace marovane
