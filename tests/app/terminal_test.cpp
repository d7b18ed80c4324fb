// The whole way of a sentence: the terminal edition with its own server and engines, in a home of its own.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "base/posix_files.h"
#include "base/sqlite.h"
#include "tests/app/terminal_run.h"
#include "tests/records/record_store.h"
#include "tests/support/temp_home.h"

namespace marovane {

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
namespace fs = std::filesystem;

constexpr const char* kRight = "He goes to school every day.";
constexpr const char* kWrong = "He go to school every day.";
constexpr const char* kMarked = "He *go* to school every day.";

class TerminalTest : public ::testing::Test {
 protected:
  base::RunResult Run(const std::vector<std::string>& words, const std::string& input = "") {
    base::RunResult run = RunTerminalProgram(words, input, environment_);
    EXPECT_THAT(ProcessesThatName(home_.Path().string()), IsEmpty()) << "no server and no engine is left";
    return run;
  }
  std::vector<std::string> Recorded() {
    auto all =
        Rows(databases_, root_ / "marovane" / "Marovane.mdb",
             "select 'ok', sentence, okFlag, upload, essayId, essaySId, haveHtm from oksentence union all "
             "select 'err', sentence, errcode <> '0' and length(errcode) <= 6, upload, essayId, essaySId, "
             "haveHtm from errsentence",
             7);
    for (const auto& row :
         Rows(databases_, root_ / "marovane" / "Marovane.mdb",
              "select 'times', times from mistakes union all select 'day', sDate from workRec "
              "union all select 'essay', essayId from essay",
              2)) {
      all.push_back(row);
    }
    return all;
  }
  std::string Read(const fs::path& path) { return files_.FileExists(path) ? files_.Read(path) : ""; }
  static unsigned ModeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions()) & 0777U;
  }

  TempHome home_;
  base::PosixFiles files_;
  base::SqliteDatabases databases_;
  fs::path root_ = home_ / ".local/share/marovane";
  std::map<std::string, std::string> environment_{{"HOME", home_.Path().string()}, {"LANG", "C.UTF-8"}};
};

TEST_F(TerminalTest, ChecksOutOfTheBoxAndRemembers) {
  base::RunResult run = Run({"check", kRight});
  EXPECT_EQ(run.status, 0) << run.output << run.errors;
  EXPECT_THAT(run.output, AllOf(StartsWith("PASS\n"), HasSubstr(kRight), HasSubstr("本句子沒有發現錯誤")));
  EXPECT_EQ(run.errors, "") << "nothing but results when nobody looks on";
  EXPECT_THAT(Recorded(), ElementsAre(std::string("ok|") + kRight + "|N|N|0|0|N"));
  EXPECT_THAT(Read(root_ / "marovane" / "setup.set"), HasSubstr("\r\nNeedSync=Y\r\n"));
  const fs::path account = home_ / ".config/marovane/account.set";
  EXPECT_THAT(Read(account), AllOf(HasSubstr("Pno="), HasSubstr("userPW=")));
  EXPECT_EQ(ModeOf(account), 0600U);
  EXPECT_EQ(ModeOf(root_ / "marovane" / "setup.set"), 0600U);
  const std::string first = Read(account);

  run = Run({"check", kWrong});
  EXPECT_EQ(run.status, 1) << run.output << run.errors;
  EXPECT_THAT(run.output, AllOf(StartsWith("ERRS  "), HasSubstr(kMarked), HasSubstr("怎麼改：go → goes\n")));
  EXPECT_EQ(Read(account), first) << "a second start keeps the account";
  const std::vector<std::string> rows{std::string("ok|") + kRight + "|N|N|0|0|N",
                                      std::string("err|") + kMarked + "|1|N|0|0|N", "times|1"};
  EXPECT_EQ(Recorded(), rows);

  run = Run({"records"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.output, AllOf(HasSubstr(kRight), HasSubstr(kMarked)));
  run = Run({"records", "1999/1/1"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(Recorded(), rows) << "looking changes nothing";
}

TEST_F(TerminalTest, LocalEngineGivesTheSameVerdictsBelowTmp) {
  root_ = home_ / "tmp";
  environment_["TMP"] = root_.string();
  base::RunResult run = Run({"check", "--local", kWrong});
  EXPECT_EQ(run.status, 1) << run.output << run.errors;
  EXPECT_THAT(run.output, AllOf(StartsWith("ERRS  "), HasSubstr(kMarked), HasSubstr("goes")));
  EXPECT_THAT(Read(root_ / "tolvex" / "registry.set"),
              AllOf(HasSubstr("findMistake=1\r\n"), HasSubstr(std::string("sentence=") + kMarked)));
  run = Run({"check", "--local", "--json", kRight});
  EXPECT_EQ(run.status, 0) << run.output << run.errors;
  EXPECT_EQ(nlohmann::json::parse(run.output)["verdict"], "PASS");
  EXPECT_THAT(Recorded(), ElementsAre(std::string("ok|") + kRight + "|N|N|0|0|N",
                                      std::string("err|") + kMarked + "|1|N|0|0|N", "times|1"));
  EXPECT_FALSE(fs::exists(home_ / ".local/share/marovane")) << "TMP is the root when it is set";
}

TEST_F(TerminalTest, ReadsSentencesFromItsInputAndGivesTheGravestStatus) {
  const base::RunResult run =
      Run({"check", "--json"}, std::string(kWrong) + "\n\n   \nHe {goes}.\n" + kWrong + "\n" + kRight);
  EXPECT_EQ(run.status, 3) << run.output << run.errors;
  std::vector<nlohmann::json> lines;
  std::istringstream output(run.output);
  for (std::string line; std::getline(output, line);) lines.push_back(nlohmann::json::parse(line));
  ASSERT_THAT(lines, SizeIs(4)) << "a line a sentence, none for blank ones";
  EXPECT_EQ(lines[0]["verdict"], "ERRS");
  EXPECT_EQ(lines[0]["sentence"], kWrong);
  EXPECT_EQ(lines[0]["marked"], kMarked);
  EXPECT_EQ(lines[0]["errcode"], lines[2]["errcode"]);
  EXPECT_THAT(lines[0]["outline"].get<std::string>(), Not(IsEmpty()));
  EXPECT_THAT(lines[0]["page"].get<std::string>(), HasSubstr("goes"));
  ASSERT_THAT(lines[0]["faults"], SizeIs(1));
  const auto& fault = lines[0]["faults"][0];
  EXPECT_EQ(fault["code"], lines[0]["errcode"]);
  const auto begin = fault["span"][0].get<std::size_t>();
  const auto end = fault["span"][1].get<std::size_t>();
  EXPECT_EQ(std::string(kWrong).substr(begin, end - begin), "go");
  EXPECT_EQ(fault["corrections"][0], "goes");
  EXPECT_THAT(fault["message"].get<std::string>(), Not(IsEmpty()));
  EXPECT_EQ(lines[0]["corrected"], kRight);
  EXPECT_THAT(lines[3]["faults"], IsEmpty());
  EXPECT_EQ(lines[1]["verdict"], "STOP");
  EXPECT_EQ(lines[1]["errcode"], "") << "nothing of the sentence before";
  EXPECT_EQ(lines[3]["verdict"], "PASS");
  EXPECT_THAT(run.errors, HasSubstr("您輸入的內容中含有不正確的字，請檢查"));
  EXPECT_THAT(Recorded(), ElementsAre(std::string("ok|") + kRight + "|N|N|0|0|N",
                                      std::string("err|") + kMarked + "|1|N|0|0|N",
                                      std::string("err|") + kMarked + "|1|N|0|0|N", "times|2"));
}

TEST_F(TerminalTest, ForgottenPasswordIsTakenFromTheMirrorAgain) {
  ASSERT_EQ(Run({"records"}).status, 0);
  const fs::path setup = root_ / "marovane" / "setup.set";
  files_.Write(setup, "autoKeyinPw=1\r\nFontSize=huge\r\ntransformValue=7\r\n", true);
  EXPECT_EQ(Run({"check", kRight}).status, 0);
  EXPECT_THAT(Read(setup), AllOf(HasSubstr("FontSize=MIDDLE\r\n"), HasSubstr("transformValue=100\r\n")));
}

TEST_F(TerminalTest, WrongUsageIsToldAndTouchesNothing) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"chek"}, {"check", "--fast"}, {"records", "today"}}) {
    const base::RunResult run = Run(words);
    EXPECT_EQ(run.status, 64);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, AllOf(HasSubstr(words.back()), HasSubstr("用法")));
  }
  EXPECT_THAT(Run({"--help"}).output, HasSubstr("用法"));
  EXPECT_THAT(Run({"--version"}).output, StartsWith("Marovane "));
  EXPECT_FALSE(fs::exists(home_ / ".local"));
  EXPECT_FALSE(fs::exists(home_ / ".config"));
}

TEST_F(TerminalTest, LooksBackOnWhatWasChecked) {
  const base::RunResult checked = Run({"check", kRight, "Why is it so cold?", kWrong});
  ASSERT_EQ(checked.status, 1) << checked.output << checked.errors;
  EXPECT_THAT(checked.output,
              ::testing::ContainsRegex("\nERRS  [A-Z]+[0-9]+  [^\n]+\nHe \\*go\\* to school every day"))
      << "code and outline of the mistake";
  const fs::path file = home_ / "list.txt";
  EXPECT_THAT(Run({"days"}).output, ::testing::EndsWith("\t3\t2\t1\n"));
  EXPECT_EQ(Run({"sentences"}).output, std::string(kRight) + "\nWhy is it so cold?\n");
  EXPECT_EQ(Run({"sentences", "1999/1/1"}).output, "");
  EXPECT_THAT(Run({"mistakes"}).output, ::testing::ContainsRegex("^[A-Z]+\t.+\t1\n  [A-Z]+[0-9]+\t.+\t1\n$"));
  EXPECT_EQ(Run({"export", "--paragraph", file.string()}).status, 0);
  EXPECT_EQ(Read(file), std::string(kRight) + " Why is it so cold?. \r\n");
  const base::RunResult again = Run({"export", file.string()});
  EXPECT_EQ(again.status, 1) << "nobody is there to say that the file may be replaced";
  EXPECT_THAT(again.errors, HasSubstr("檔案已經存在"));
  EXPECT_EQ(Read(file), std::string(kRight) + " Why is it so cold?. \r\n");
}

TEST_F(TerminalTest, WalksAnEssayThroughItsCorrections) {
  const fs::path file = home_ / "essay.txt";
  files_.Write(file, std::string(kRight) + "\n" + kWrong, false);
  // The first correction is still wrong, the second one would leave the essay without an end.
  const std::string lines = std::string(kWrong) + "\nShe goes to school\nShe goes to school every day.\n";
  const base::RunResult run = Run({"essay", file.string()}, lines);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_THAT(run.errors, HasSubstr("句子必需以標點結尾"));
  EXPECT_THAT(run.output, HasSubstr("全文共 2 個句子，共計 12 個字，犯錯 2 次"));
  const fs::path records = root_ / "marovane" / "Marovane.mdb";
  EXPECT_THAT(Rows(databases_, records, "select sentence from oksentence order by essaySId", 1),
              ElementsAre(kRight, "She goes to school every day."));
  EXPECT_THAT(Rows(databases_, records, "select sentence from errsentence", 1),
              ElementsAre(kMarked, kMarked));
  EXPECT_THAT(Rows(databases_, records, "select newEssay, finalSet from essay", 2),
              ElementsAre(std::string(kRight) + "\r\nShe goes to school every day.|N"));
}

TEST_F(TerminalTest, DamagedRecordsAreSetAsideAndWhatCanBeReadIsCarriedOver) {
  ASSERT_EQ(Run({"check", kRight}).status, 0);
  const fs::path records = root_ / "marovane" / "Marovane.mdb";
  std::string damaged = Read(records);
  damaged.replace(0, 100, 100, 'x');
  files_.Write(records, damaged, false);
  const base::RunResult run = Run({"check", kWrong});
  EXPECT_EQ(run.status, 1) << run.output << run.errors;
  EXPECT_THAT(run.errors, AllOf(HasSubstr("已經損毀"), HasSubstr("set-aside")));
  EXPECT_THAT(Recorded(), ElementsAre(std::string("ok|") + kRight + "|N|N|0|0|N",
                                      std::string("err|") + kMarked + "|1|N|0|0|N", "times|1"));
  const auto aside = files_.List(root_ / "marovane" / "set-aside");
  ASSERT_FALSE(aside.empty());
  EXPECT_EQ(Read(root_ / "marovane" / "set-aside" / aside[0]), damaged);
  EXPECT_EQ(Run({"check", kRight}).errors, "") << "it is told once";
}

}  // namespace

}  // namespace marovane
