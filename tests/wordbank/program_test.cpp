// wexbin.exe as a process, in a folder of its own.
#include "base/cp950.h"
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
  void SetUp() override { home_.Write("registry.set", kReset); }

  int Run(std::vector<std::string> args, const std::string& dataDir = WORDBANK_DATA) {
    args.insert(args.begin(), {"MAROVANE_DATA=" + dataDir, WEXBIN_PROGRAM});
    auto run = RunProgram({.program = "/usr/bin/env", .arguments = args, .workingFolder = home_.Path()});
    errors_ = std::move(run.errors);
    return run.status;
  }

  std::string Value(const std::string& key) const {
    return tolvex::ReadRegistry(home_ / "registry.set").Find(key).value_or("?");
  }

  /// The lines of the answer, as the window reads them.
  std::vector<std::string> Answer() const {
    std::ifstream in(Value("collocationListHtm"), std::ios::binary);
    const std::string text = base::FromCp950(std::string(std::istreambuf_iterator<char>(in), {}));
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
      const auto end = text.find("\r\n", at);
      if (end == std::string::npos) ADD_FAILURE() << "the last line is not closed";
      lines.push_back(text.substr(at, end - at));
      at = std::min(end, text.size() - 2) + 2;
    }
    return lines;
  }

  TempFolder home_;
  std::string errors_;
};

TEST_F(WexbinProgram, WritesATitleAndOneItemALine) {
  ASSERT_EQ(Run({"rains,CNJ"}), 0);
  const auto lines = Answer();
  const auto items = SharedBank().Find("rain", "CNJ");
  ASSERT_EQ(lines.size(), items.size() + 1);
  EXPECT_EQ(lines[0], "<title>rains");
  for (std::size_t i = 0; i < items.size(); ++i) EXPECT_EQ(lines[i + 1], items[i].Line());
}

TEST_F(WexbinProgram, LeavesTheAnswerInItsFolderAndTheOtherKeysAlone) {
  ASSERT_EQ(Run({"rain,CNJ"}), 0);
  EXPECT_EQ(fs::path(Value("collocationListHtm")).parent_path(), fs::canonical(home_.Path()));
  EXPECT_TRUE(fs::path(Value("collocationListHtm")).filename().string().starts_with("tmp"));
  EXPECT_EQ(Value("sentence"), "He go.");
  EXPECT_EQ(Value("col_suggestion"), "0");
  EXPECT_TRUE(home_.Read("registry.set").starts_with("**settings for tolvex=\r\n"));
}

TEST_F(WexbinProgram, AlwaysAnswersSoThatTheWindowNeedNotWait) {
  for (const std::vector<std::string>& args : {std::vector<std::string>{},
                                               {""},
                                               {"qwxzk,CNV"},
                                               {"rain"},
                                               {"rain,XYZ"},
                                               {"ice", "cream,CNV"},
                                               {","},
                                               {"\xb7\xa1,SN"},
                                               {std::string(5000, 'x') + ",SN"}}) {
    home_.Write("registry.set", kReset);
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
  fs::remove(home_ / "registry.set");
  EXPECT_EQ(Run({"rain,CNJ"}), 2);
  EXPECT_NE(errors_.find("registry.set"), std::string::npos);
}

}  // namespace
}  // namespace wexbin::test
