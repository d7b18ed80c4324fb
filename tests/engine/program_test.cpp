// tolvex2.exe as a process, in a folder of its own.
#include <gtest/gtest.h>

#include <algorithm>

#include "engine/program/registry_file.h"
#include "tests/engine/shared_engine.h"
#include "tests/support/run_program.h"

using namespace marovane;

namespace tolvex::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kReset =
    "**settings for tolvex=\r\ncol_suggestion=0\r\ncollocationListHtm=\r\nerrcode=0\r\nfindMistake=0\r\n"
    "qcode=0\r\nsentence=0\r\nhtm4chk=\r\nsynChk=\r\ncoursePath=\r\n";

class ProgramTest : public ::testing::Test {
 protected:
  void Put(const std::string& sentence) const {
    std::string text = kReset;
    text.replace(text.find("sentence=0"), 10, "sentence=" + sentence);
    WriteFile(registry_, text);
  }

  int Run(const std::vector<std::string>& args) {
    auto run = RunProgram({.program = ENGINE_PROGRAM, .arguments = args, .workingFolder = home_.Path()});
    errors_ = std::move(run.errors);
    return run.status;
  }

  std::string Value(const std::string& key) const { return ReadRegistry(registry_).Find(key).value_or("?"); }

  std::size_t FileCount() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(home_.Path()), {}));
  }

  const TempFolder home_;
  const fs::path registry_ = home_ / "registry.set";
  std::string errors_;
};

TEST_F(ProgramTest, AnswersAFaultySentence) {
  Put("He go to school every day.");
  ASSERT_EQ(Run({"beta,074148"}), 0);
  EXPECT_EQ(Value("findMistake") + Value("errcode") + Value("col_suggestion"), "1AG010");
  EXPECT_EQ(Value("sentence"), "He *go* to school every day.");
  const fs::path page = Value("htm4chk");
  EXPECT_EQ(page.parent_path(), home_.Path());
  EXPECT_TRUE(page.filename().string().starts_with("tmp") && page.extension() == ".htm");
  const std::string bytes = ReadFile(page);
  EXPECT_TRUE(bytes.substr(2).starts_with("<!DOCTYPE html>"));
  EXPECT_NE(bytes.find("\xBF\xF9\xBB\x7E"), std::string::npos) << "no 錯誤 in Big5";
}

TEST_F(ProgramTest, KeepsTheOtherLinesOfTheFileAndTheirEnds) {
  Put("He goes home.");
  ASSERT_EQ(Run({"beta,010203"}), 0);
  const std::string text = ReadFile(registry_);
  EXPECT_TRUE(
      text.starts_with("**settings for tolvex=\r\ncol_suggestion=0\r\ncollocationListHtm=\r\nerrcode=0\r\n"
                       "findMistake=0\r\nqcode=0\r\nsentence=He goes home.\r\nhtm4chk="));
  EXPECT_TRUE(text.ends_with(".htm\r\nsynChk=\r\ncoursePath=\r\n"));
}

TEST_F(ProgramTest, WritesNoPageForARightSentenceOfAnEssay) {
  Put("He goes home.");
  ASSERT_EQ(Run({"a,b,504999"}), 0);
  EXPECT_EQ(Value("htm4chk"), "NIL");
  EXPECT_EQ(FileCount(), 1U);
  Put("He know that 1 + 1 = 2 is right = wrong.");
  ASSERT_EQ(Run({"beta,500151"}), 0);
  EXPECT_NE(ReadFile(Value("htm4chk")).find("right = wrong"), std::string::npos) << "signs and all";
}

TEST_F(ProgramTest, RefusesWrongRunCodesAndWritesNothing) {
  Put("He go home.");
  const std::string before = ReadFile(registry_);
  std::vector<std::vector<std::string>> wrong = {{}, {"beta,074148", "x"}};
  for (const char* argument :
       {"", "074148", "beta,074149", "beta,07414", "beta,0741480", "beta,07a148", "beta,999998"})
    wrong.push_back({argument});
  for (const auto& args : wrong) {
    EXPECT_EQ(Run(args), 2);
    EXPECT_EQ(std::count(errors_.begin(), errors_.end(), '\n'), 1) << errors_;
    EXPECT_EQ(ReadFile(registry_), before);
    EXPECT_EQ(FileCount(), 1U);
  }
}

TEST_F(ProgramTest, RefusesAMissingFileOrSentence) {
  EXPECT_EQ(Run({"beta,074148"}), 2);
  WriteFile(registry_, "**settings for tolvex=\r\nerrcode=0\r\n");
  EXPECT_EQ(Run({"beta,074148"}), 2);
  EXPECT_EQ(FileCount(), 1U);
}

TEST_F(ProgramTest, RegistryFileIsInCp950) {
  WriteFile(registry_, "marker=\r\n  sentence = \xBF\xF9 = 2 \r\nsentence=second\r\n");
  base::KeyValues registry = ReadRegistry(registry_);
  EXPECT_EQ(registry.Find("sentence"), "錯 = 2");
  registry.Set("sentence", "誤 é");
  WriteRegistry(registry_, registry);
  EXPECT_EQ(ReadFile(registry_), "marker=\r\nsentence=\xBB\x7E &#233;\r\nsentence=second\r\n");
}

}  // namespace
}  // namespace tolvex::test
