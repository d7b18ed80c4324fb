#include "server/accounts/accounts.h"

#include <gmock/gmock.h>

#include "protocol/refusal.h"
#include "server/accounts/account_file.h"
#include "tests/support/temp_folder.h"

namespace server {
namespace {

constexpr const char* kNumber = "1234567890";

class AccountsTest : public testing::Test {
 protected:
  AccountsTest() { accounts_.Ensure(kNumber, "right"); }

  /// The account that was proven, or the word of the refusal.
  std::string Try(const std::string& number, const std::string& password) {
    try {
      return accounts_.Authenticate(number, password);
    } catch (const protocol::Refusal& refusal) {
      return refusal.what();
    }
  }

  TempFolder folder_;
  std::unique_ptr<AccountStore> store_ = OpenAccountStore(folder_ / "server.db");
  std::chrono::steady_clock::time_point now_{};
  Accounts accounts_{*store_, [this] { return now_; }};
};

TEST_F(AccountsTest, AcceptsTheRightPasswordOfAKnownNumberAloneAndKeepsNoneInClear) {
  const std::pair<std::string, const char*> numbers[] = {
      {"1234567890", "1234567890"},
      {"123-456 7890", "1234567890"},
      {"9999999999", "ERR_NOTFOUND"},
      {"' OR 1=1", "ERR_INVAILD_ACCOUNT"},
  };
  for (const auto& [number, answer] : numbers) EXPECT_EQ(Try(number, "right"), answer) << number;
  for (const char* wrong : {"", "Right", "right ", "righ", "righty"}) {
    EXPECT_EQ(Try(kNumber, wrong), "ERR_WRONG_PASSWORD") << wrong;
  }
  EXPECT_TRUE(store_->PasswordHash(kNumber)->starts_with("$argon2id$"));
  EXPECT_EQ(ReadFile(folder_ / "server.db-wal").find("right"), std::string::npos);
}

TEST_F(AccountsTest, SlowsDownGuessesButNotForLong) {
  for (int i = 0; i < 10; ++i) EXPECT_EQ(Try(kNumber, "wrong"), "ERR_WRONG_PASSWORD");
  EXPECT_EQ(Try(kNumber, "wrong"), "ERR_TRY_LATER");
  EXPECT_EQ(Try(kNumber, "right"), "ERR_TRY_LATER");
  now_ += std::chrono::seconds(4);
  EXPECT_EQ(Try(kNumber, "right"), kNumber);
  EXPECT_EQ(Try(kNumber, "right"), kNumber) << "a right password costs no try";
  EXPECT_EQ(Try(kNumber, "wrong"), "ERR_WRONG_PASSWORD");
  EXPECT_EQ(Try(kNumber, "wrong"), "ERR_TRY_LATER");
}

TEST_F(AccountsTest, EnsuringAgainChangesThePasswordAndNothingElse) {
  EXPECT_EQ(accounts_.Known(kNumber), kNumber) << "waits until it is there";
  store_->PutUserSettings(kNumber, "$FontSize:BIG");
  store_->PutUserSettings("4711", "$FontSize:BIG");
  EXPECT_EQ(store_->UserSettings("4711"), "") << "an unknown account keeps nothing";
  const auto hash = store_->PasswordHash(kNumber);
  accounts_.Ensure(kNumber, "right");
  EXPECT_EQ(accounts_.Known(kNumber), kNumber);
  EXPECT_EQ(store_->PasswordHash(kNumber), hash);
  accounts_.Ensure(kNumber, "other");
  EXPECT_EQ(Try(kNumber, "other"), kNumber);
  EXPECT_EQ(Try(kNumber, "right"), "ERR_WRONG_PASSWORD");
  EXPECT_EQ(store_->UserSettings(kNumber), "$FontSize:BIG");
}

unsigned ModeOf(const std::filesystem::path& path) {
  return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

TEST(AccountFile, IsMadeForTheOwnerAlone) {
  const TempFolder folder;
  const auto file = folder / "config/marovane" / "account.set";
  const AccountEntry made = EnsureAccountFile(file);
  EXPECT_THAT(made.number, testing::MatchesRegex("[1-9][0-9]{9}"));
  EXPECT_THAT(made.password, testing::MatchesRegex("[0-9A-Za-z]{12}"));
  EXPECT_EQ(ReadFile(file), "Pno=" + made.number + "\r\nuserPW=" + made.password + "\r\n");
  EXPECT_EQ(ModeOf(file), 0600U);
  EXPECT_EQ(ModeOf(file.parent_path()), 0700U);
  const AccountEntry other = EnsureAccountFile(folder / "other.set");
  EXPECT_NE(other.number, made.number);
  EXPECT_NE(other.password, made.password);
}

TEST(AccountFile, MakesOnlyWhatIsMissing) {
  const struct {
    const char *before, *number, *password, *after;
  } cases[] = {
      {"Pno=77-88\r\nuserPW=abc\r\n", "7788", "abc", "Pno=77-88\r\nuserPW=abc\r\n"},
      {"Pno=no number\r\nuserPW=x\r\n", "nonumber", "x", "Pno=no number\r\nuserPW=x\r\n"},
      {"# mine\r\nuserPW = abc\nPno= 0 \n", "[1-9][0-9]{9}", "abc",
       "# mine=\r\nuserPW=abc\r\nPno=[0-9]{10}\r\n"},
      {"Pno=7788\nother=1", "7788", "[0-9A-Za-z]{12}", "Pno=7788\r\nother=1\r\nuserPW=[0-9A-Za-z]{12}\r\n"},
  };
  for (const auto& [before, number, password, after] : cases) {
    const TempFolder folder;
    WriteFile(folder / "account.set", before);
    const AccountEntry entry = EnsureAccountFile(folder / "account.set");
    EXPECT_THAT(entry.number, testing::MatchesRegex(number)) << before;
    EXPECT_THAT(entry.password, testing::MatchesRegex(password)) << before;
    EXPECT_THAT(ReadFile(folder / "account.set"), testing::MatchesRegex(after)) << before;
  }
}

TEST(AccountFile, RefusesWhatItCannotUse) {
  const TempFolder folder;
  WriteFile(folder / "bad.set", "Pno=12/34\r\nuserPW=x\r\n");
  for (const char* file : {"bad.set", "bad.set/account.set"}) {
    EXPECT_THROW(EnsureAccountFile(folder / file), std::runtime_error) << file;
  }
  EXPECT_EQ(ReadFile(folder / "bad.set"), "Pno=12/34\r\nuserPW=x\r\n");
}

}  // namespace
}  // namespace server
