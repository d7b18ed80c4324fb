#include "server/accounts/account_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/server/temp_folder.h"

namespace server {
namespace {

using testing::MatchesRegex;

unsigned ModeOf(const std::filesystem::path& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 0777;
}

TEST(AccountFile, MakesAnAccountOnceAndKeepsIt) {
  const TempFolder folder;
  const auto file = folder / "config/marovane" / "account.set";
  const AccountEntry made = EnsureAccountFile(file);
  EXPECT_THAT(made.number, MatchesRegex("[1-9][0-9]{9}"));
  EXPECT_THAT(made.password, MatchesRegex("[0-9A-Za-z]{12}"));
  EXPECT_EQ(ReadFile(file), "Pno=" + made.number + "\r\nuserPW=" + made.password + "\r\n");
  EXPECT_EQ(ModeOf(file), 0600U);
  EXPECT_EQ(ModeOf(file.parent_path()), 0700U);

  // A start that was killed before it stored the account goes on from the file.
  const AccountEntry again = EnsureAccountFile(file);
  EXPECT_EQ(again.number, made.number);
  EXPECT_EQ(again.password, made.password);
}

TEST(AccountFile, MakesOnlyWhatIsMissing) {
  struct Case {
    const char* before;
    const char* number;
    const char* password;
    const char* after;
  };
  const Case cases[] = {
      {"Pno=77-88\r\nuserPW=abc\r\n", "7788", "abc", "Pno=77-88\r\nuserPW=abc\r\n"},
      {"# mine\r\nuserPW = abc\nPno= 0 \n", "[1-9][0-9]{9}", "abc",
       "# mine=\r\nuserPW=abc\r\nPno=[0-9]{10}\r\n"},
      {"Pno=7788\nother=1", "7788", "[0-9A-Za-z]{12}", "Pno=7788\r\nother=1\r\nuserPW=[0-9A-Za-z]{12}\r\n"},
  };
  for (const Case& each : cases) {
    const TempFolder folder;
    WriteFile(folder / "account.set", each.before);
    const AccountEntry entry = EnsureAccountFile(folder / "account.set");
    EXPECT_THAT(entry.number, MatchesRegex(each.number)) << each.before;
    EXPECT_THAT(entry.password, MatchesRegex(each.password)) << each.before;
    EXPECT_THAT(ReadFile(folder / "account.set"), MatchesRegex(each.after)) << each.before;
  }
}

TEST(AccountFile, TellsWhatItCannotUse) {
  const TempFolder folder;
  WriteFile(folder / "bad.set", "Pno=no number\r\nuserPW=x\r\n");
  WriteFile(folder / "bad2.set", "Pno=12/34\r\nuserPW=x\r\n");
  EXPECT_NO_THROW(EnsureAccountFile(folder / "bad.set")) << "blanks go";
  EXPECT_THROW(EnsureAccountFile(folder / "bad2.set"), std::runtime_error);
  EXPECT_THROW(EnsureAccountFile(folder / "bad.set/account.set"), std::runtime_error);
  EXPECT_EQ(ReadFile(folder / "bad2.set"), "Pno=12/34\r\nuserPW=x\r\n");
}

TEST(AccountFile, TwoAccountsAreNeverTheSame) {
  const TempFolder folder;
  const AccountEntry first = EnsureAccountFile(folder / "1.set");
  const AccountEntry second = EnsureAccountFile(folder / "2.set");
  EXPECT_NE(first.number, second.number);
  EXPECT_NE(first.password, second.password);
}

}  // namespace
}  // namespace server
