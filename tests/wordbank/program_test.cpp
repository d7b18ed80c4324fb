// wexbin.exe as a process, in a folder of its own.
#include <gtest/gtest.h>

#include "base/cp950.h"
#include "base/text.h"
#include "engine/program/registry_file.h"
#include "tests/support/run_program.h"
#include "tests/wordbank/shared_bank.h"

using namespace marovane;

namespace wexbin::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kReset =
    "**settings for tolvex=\r\ncol_suggestion=0\r\ncollocationListHtm=\r\nerrcode=0\r\nsentence=He go.\r\n";

class WexbinProgram : public ::testing::Test {
 protected:
  void SetUp() override { WriteFile(registry_, kReset); }

  int Run(std::vector<std::string> args, const std::string& dataDir = ENGINE_DATA) {
    args.insert(args.begin(), {"MAROVANE_DATA=" + dataDir, WEXBIN_PROGRAM});
    auto run = RunProgram({.program = "/usr/bin/env", .arguments = args, .workingFolder = home_.Path()});
    errors_ = std::move(run.errors);
    return run.status;
  }

  std::string Value(const std::string& key) const {
    return tolvex::ReadRegistry(registry_).Find(key).value_or("?");
  }

  /// The lines of the answer, as the window reads them.
  std::vector<std::string> Answer() const {
    const std::string text = base::FromCp950(ReadFile(Value("collocationListHtm")));
    EXPECT_TRUE(text.ends_with("\r\n")) << "the last line is not closed";
    return base::Split(text.substr(0, text.rfind("\r\n")), "\r\n");
  }

  const TempFolder home_;
  const fs::path registry_ = home_ / "registry.set";
  std::string errors_;
};

TEST_F(WexbinProgram, WritesATitleAndOneItemALineAndLeavesTheOtherKeysAlone) {
  ASSERT_EQ(Run({"rains,CNJ"}), 0);
  const auto lines = Answer();
  const auto items = SharedBank().Find("rain", "CNJ");
  ASSERT_EQ(lines.size(), items.size() + 1);
  EXPECT_EQ(lines[0], "<title>rains");
  for (std::size_t i = 0; i < items.size(); ++i) EXPECT_EQ(lines[i + 1], items[i].Line());
  EXPECT_EQ(fs::path(Value("collocationListHtm")).parent_path(), fs::canonical(home_.Path()));
  EXPECT_TRUE(fs::path(Value("collocationListHtm")).filename().string().starts_with("tmp"));
  EXPECT_EQ(Value("sentence"), "He go.");
  EXPECT_EQ(Value("col_suggestion"), "0");
  EXPECT_TRUE(ReadFile(registry_).starts_with("**settings for tolvex=\r\n"));
}

TEST_F(WexbinProgram, AlwaysAnswersSoThatTheWindowNeedNotWait) {
  std::vector<std::vector<std::string>> queries = {
      {}, {"ice", "cream,CNV"}, {std::string(5000, 'x') + ",SN"}};
  for (const char* query : {"", "qwxzk,CNV", "rain", "rain,XYZ", ",", "\xb7\xa1,SN"})
    queries.push_back({query});
  for (const auto& args : queries) {
    WriteFile(registry_, kReset);
    ASSERT_EQ(Run(args), 0);
    const auto lines = Answer();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with("<title>"));
    EXPECT_EQ(lines[1], "找不到任何搭配資料");
  }
}

TEST_F(WexbinProgram, FailsWithAReasonWhenItCannotAnswer) {
  EXPECT_EQ(Run({"rain,CNJ"}, home_.Path()), 2);
  EXPECT_NE(errors_.find("wordbank.tables"), std::string::npos);
  EXPECT_EQ(Value("collocationListHtm"), "");
  fs::remove(registry_);
  EXPECT_EQ(Run({"rain,CNJ"}), 2);
  EXPECT_NE(errors_.find("registry.set"), std::string::npos);
}

}  // namespace
}  // namespace wexbin::test
