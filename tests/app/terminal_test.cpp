// The whole way of a sentence: the terminal edition with its own server and engines, in a home of its own.
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "base/posix_files.h"
#include "base/sqlite.h"
#include "tests/app/terminal_run.h"
#include "tests/records/record_store.h"

namespace marovane {

namespace {

using namespace ::testing;
namespace fs = std::filesystem;

constexpr const char* kRight = "He goes to school every day.";
constexpr const char* kWrong = "He go to school every day.";
constexpr const char* kMarked = "He *go* to school every day.";

const std::string kRightRow = std::string("ok|") + kRight + "|N|N|0|0|N";
const std::string kWrongRow = std::string("err|") + kMarked + "|1|N|0|0|N";

class TerminalTest : public ::testing::Test {
 protected:
  base::RunResult Run(int status, const std::vector<std::string>& words, const std::string& input = "") {
    return RunTerminalProgram(home_, status, words, input, variables_);
  }
  fs::path Data(const std::string& name) const { return root_ / "marovane" / name; }
  std::vector<std::string> Select(const std::string& query) {
    return Rows(databases_, Data("Marovane.mdb"), query);
  }
  std::vector<std::string> Recorded() {
    auto all = Select(
        "select 'ok', sentence, okFlag, upload, essayId, essaySId, haveHtm from oksentence union all "
        "select 'err', sentence, errcode <> '0' and length(errcode) <= 6, upload, essayId, essaySId, "
        "haveHtm from errsentence");
    const auto others = Select(
        "select 'times', times from mistakes union all select 'day', sDate from workRec "
        "union all select 'essay', essayId from essay");
    all.insert(all.end(), others.begin(), others.end());
    return all;
  }
  static unsigned ModeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions()) & 0777U;
  }

  TempHome home_;
  std::vector<std::string> variables_;
  base::PosixFiles files_;
  base::SqliteDatabases databases_;
  fs::path root_ = home_ / ".local/share/marovane";
};

TEST_F(TerminalTest, ChecksOutOfTheBoxAndRemembers) {
  base::RunResult run = Run(0, {"check", kRight});
  EXPECT_THAT(run.output, AllOf(StartsWith("PASS\n"), HasSubstr(kRight), HasSubstr("本句子沒有發現錯誤")));
  EXPECT_EQ(run.errors, "") << "nothing but results when nobody looks on";
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow));
  EXPECT_THAT(ReadFile(Data("setup.set")), HasSubstr("\r\nNeedSync=Y\r\n"));
  const fs::path account = home_ / ".config/marovane/account.set";
  const std::string first = ReadFile(account);
  EXPECT_THAT(first, AllOf(HasSubstr("Pno="), HasSubstr("userPW=")));
  EXPECT_EQ(ModeOf(account), 0600U);
  EXPECT_EQ(ModeOf(Data("setup.set")), 0600U);

  run = Run(1, {"check", kWrong});
  EXPECT_THAT(run.output, AllOf(StartsWith("ERRS  "), HasSubstr(kMarked), HasSubstr("怎麼改：go → goes\n")));
  EXPECT_EQ(ReadFile(account), first) << "a second start keeps the account";
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow, kWrongRow, "times|1"));

  EXPECT_THAT(Run(0, {"records"}).output, AllOf(HasSubstr(kRight), HasSubstr(kMarked)));
  EXPECT_EQ(Run(0, {"records", "1999/1/1"}).output, "");
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow, kWrongRow, "times|1")) << "looking changes nothing";
}

TEST_F(TerminalTest, LocalEngineGivesTheSameVerdictsBelowAChosenRoot) {
  root_ = home_ / "chosen";
  variables_ = {"MAROVANE_HOME=" + root_.string()};
  EXPECT_THAT(Run(1, {"check", "--local", kWrong}).output,
              AllOf(StartsWith("ERRS  "), HasSubstr(kMarked), HasSubstr("goes")));
  EXPECT_THAT(ReadFile(root_ / "tolvex" / "registry.set"),
              AllOf(HasSubstr("findMistake=1\r\n"), HasSubstr(std::string("sentence=") + kMarked)));
  const base::RunResult run = Run(0, {"check", "--local", "--json", kRight});
  EXPECT_EQ(nlohmann::json::parse(run.output)["verdict"], "PASS");
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow, kWrongRow, "times|1"));
  EXPECT_FALSE(fs::exists(home_ / ".local/share/marovane")) << "all is below the chosen root";
}

TEST_F(TerminalTest, RecordsOfATemporaryFolderMoveAndAreGoneOnWith) {
  const fs::path old = home_ / "run/tmp";
  variables_ = {"MAROVANE_HOME=" + old.string()};
  Run(1, {"check", kWrong});
  ASSERT_TRUE(fs::exists(old / "marovane-server/server.db"));
  variables_ = {"XDG_RUNTIME_DIR=" + (home_ / "run").string(), "TMP=" + old.string()};
  const base::RunResult run = Run(0, {"check", kRight});
  EXPECT_EQ(run.errors, "") << "the account of the own server is known to it";
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow, kWrongRow, "times|1"));
  EXPECT_FALSE(fs::exists(old / "marovane"));
  EXPECT_FALSE(fs::exists(old / "marovane-server"));
}

TEST_F(TerminalTest, RecordsThatCannotBeUsedEndItWithACodeOfTheirOwn) {
  variables_ = {"MAROVANE_HOME=data"};
  EXPECT_THAT(Run(74, {"records"}).errors,
              AllOf(StartsWith("無法使用學習記錄："), HasSubstr("MAROVANE_HOME")));
  WriteFile(home_ / "file", "");
  variables_ = {"MAROVANE_HOME=" + (home_ / "file/data").string()};
  EXPECT_THAT(Run(74, {"check", kRight}).errors, HasSubstr((home_ / "file").string()));
}

TEST_F(TerminalTest, ReadsSentencesFromItsInputAndGivesTheGravestStatus) {
  const base::RunResult run =
      Run(3, {"check", "--json"}, std::string(kWrong) + "\n\n   \nHe {goes}.\n" + kWrong + "\n" + kRight);
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
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow, kWrongRow, kWrongRow, "times|2"));
}

TEST_F(TerminalTest, ForgottenPasswordComesFromTheMirrorAgain) {
  Run(0, {"records"});
  files_.Write(Data("setup.set"), "autoKeyinPw=1\r\nFontSize=huge\r\ntransformValue=7\r\n", true);
  Run(0, {"check", kRight});
  EXPECT_THAT(ReadFile(Data("setup.set")),
              AllOf(HasSubstr("FontSize=MIDDLE\r\n"), HasSubstr("transformValue=100\r\n")));
}

TEST_F(TerminalTest, WrongUsageIsReportedAndTouchesNothing) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"chek"}, {"check", "--fast"}, {"records", "today"}}) {
    const base::RunResult run = Run(64, words);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, AllOf(HasSubstr(words.back()), HasSubstr("用法")));
  }
  EXPECT_THAT(Run(0, {"--help"}).output, HasSubstr("用法"));
  EXPECT_THAT(Run(0, {"--version"}).output, StartsWith("Marovane "));
  EXPECT_FALSE(fs::exists(home_ / ".local"));
  EXPECT_FALSE(fs::exists(home_ / ".config"));
}

TEST_F(TerminalTest, LooksBackOnWhatWasChecked) {
  EXPECT_THAT(Run(1, {"check", kRight, "Why is it so cold?", kWrong}).output,
              ContainsRegex("\nERRS  [A-Z]+[0-9]+  [^\n]+\nHe \\*go\\* to school every day"))
      << "code and outline of the mistake";
  const fs::path file = home_ / "list.txt";
  EXPECT_THAT(Run(0, {"days"}).output, EndsWith("\t3\t2\t1\n"));
  EXPECT_EQ(Run(0, {"sentences"}).output, std::string(kRight) + "\nWhy is it so cold?\n");
  EXPECT_EQ(Run(0, {"sentences", "1999/1/1"}).output, "");
  EXPECT_THAT(Run(0, {"mistakes"}).output, ContainsRegex("^[A-Z]+\t.+\t1\n  [A-Z]+[0-9]+\t.+\t1\n$"));
  Run(0, {"export", "--paragraph", file.string()});
  const std::string exported = std::string(kRight) + " Why is it so cold?. \r\n";
  EXPECT_EQ(ReadFile(file), exported);
  // Nobody is there to say that the file may be replaced.
  EXPECT_THAT(Run(1, {"export", file.string()}).errors, HasSubstr("檔案已經存在"));
  EXPECT_EQ(ReadFile(file), exported);
}

TEST_F(TerminalTest, WalksAnEssayThroughItsCorrections) {
  const fs::path file = home_ / "essay.txt";
  files_.Write(file, std::string(kRight) + "\n" + kWrong, false);
  // The first correction is still wrong, the second one would leave the essay without an end.
  const std::string lines = std::string(kWrong) + "\nShe goes to school\nShe goes to school every day.\n";
  const base::RunResult run = Run(0, {"essay", file.string()}, lines);
  EXPECT_THAT(run.errors, HasSubstr("句子必需以標點結尾"));
  EXPECT_THAT(run.output, HasSubstr("全文共 2 個句子，共計 12 個字，犯錯 2 次"));
  EXPECT_THAT(Select("select sentence from oksentence order by essaySId"),
              ElementsAre(kRight, "She goes to school every day."));
  EXPECT_THAT(Select("select sentence from errsentence"), ElementsAre(kMarked, kMarked));
  EXPECT_THAT(Select("select newEssay, finalSet from essay"),
              ElementsAre(std::string(kRight) + "\r\nShe goes to school every day.|N"));
}

TEST_F(TerminalTest, DamagedRecordsAreSetAsideAndWhatCanBeReadIsCarriedOver) {
  Run(0, {"check", kRight});
  std::string damaged = ReadFile(Data("Marovane.mdb"));
  damaged.replace(0, 100, 100, 'x');
  files_.Write(Data("Marovane.mdb"), damaged, false);
  EXPECT_THAT(Run(1, {"check", kWrong}).errors, AllOf(HasSubstr("已經損毀"), HasSubstr("set-aside")));
  EXPECT_THAT(Recorded(), ElementsAre(kRightRow, kWrongRow, "times|1"));
  const auto aside = files_.List(Data("set-aside"));
  ASSERT_FALSE(aside.empty());
  EXPECT_EQ(ReadFile(Data("set-aside") / aside[0]), damaged);
  EXPECT_EQ(Run(0, {"check", kRight}).errors, "") << "it is reported once";
}

/// Topics of the learner's own: taken up again, listed, deleted.
class TerminalTopics : public TerminalTest {
 protected:
  TerminalTopics() { WriteFile(file_, "I like dogs. He go home.\n"); }
  /// The numbers that a list begins its lines with.
  static std::vector<std::string> Numbers(const std::string& list) {
    static const std::regex number("(?:^|\n) *([0-9]+)");
    return {std::sregex_token_iterator(list.begin(), list.end(), number, 1), std::sregex_token_iterator()};
  }
  const std::string file_ = home_ / "essay.txt";
};

TEST_F(TerminalTopics, ATopicIsTakenUpAgainAndItsEssaysAreDeletedOneByOne) {
  Run(0, {"essay", "--title", "My pets", file_}, "He goes home.\n");
  const auto first = Numbers(Run(0, {"essay", "--topics"}).output);
  ASSERT_EQ(first.size(), 2U);
  Run(1, {"essay", "--topic", first[0], file_});  // nobody corrects it
  const std::string list = Run(0, {"essay", "--topics"}).output;
  EXPECT_THAT(list, AllOf(HasSubstr("My pets（練習數 2）"), HasSubstr("犯錯數 1  正常"),
                          HasSubstr("犯錯數 1  中斷")));
  const auto numbers = Numbers(list);
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    Run(0, {"essay", "--delete", numbers[i]});
    EXPECT_THAT(Run(3, {"essay", "--delete", numbers[i]}).errors, HasSubstr("沒有這篇短文"));
  }
  EXPECT_EQ(Run(0, {"essay", "--topics"}).output, "");
  EXPECT_THAT(Run(3, {"essay", "--topic", first[0], file_}).errors, HasSubstr("沒有這個題目"));
}

// The word helper, over its own server and over the word bank's own program.
using TerminalWords = TerminalTest;

TEST_F(TerminalWords, PartnersAreTheSameFromServerAndProgram) {
  const base::RunResult web = Run(0, {"words", "rain,CNJ"});
  EXPECT_THAT(web.output, ContainsRegex("(^|\n)heavy rain( >> |\n)"));
  EXPECT_EQ(web.errors, "") << "and the list of outside sites is in order";
  EXPECT_EQ(Run(0, {"words", "--local", "rain,CNJ"}).output, web.output);
  Run(0, {"words", "run,CVM"});
}

TEST_F(TerminalWords, SynonymsTranslationAndNothingFound) {
  EXPECT_THAT(Run(0, {"words", "happy,SJ"}).output, HasSubstr("glad"));
  EXPECT_THAT(Run(0, {"translate", "我喜歡下雨天"}).output, AllOf(HasSubstr("like"), HasSubstr("rain")));
  const base::RunResult none = Run(3, {"words", "xqzzv,CNV"});
  EXPECT_EQ(none.output, "");
  EXPECT_THAT(none.errors, HasSubstr("抱歉，找不到任何搭配資料"));
}

}  // namespace

}  // namespace marovane
