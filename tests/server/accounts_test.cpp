#include "server/accounts/accounts.h"

#include <gmock/gmock.h>

#include "protocol/refusal.h"
#include "server/accounts/account_file.h"
#include "server/accounts/password.h"
#include "tests/support/temp_folder.h"

namespace server {
namespace {

constexpr const char* kNumber = "1234567890";

class AccountsTest : public testing::Test {
 protected:
  AccountsTest() { accounts_.Ensure(kNumber, "right"); }

  /// The account that was proven, or the word of the refusal.
  std::string Try(const std::string& number, const std::string& password,
                  const std::string& address = "192.0.2.1") {
    try {
      return accounts_.LogIn(number, password, {address, token_, ""}).account;
    } catch (const protocol::Refusal& refusal) {
      return refusal.what();
    }
  }

  /// The same of a token.
  std::string TryToken(const std::string& number, const std::string& token, const std::string& address) {
    try {
      return accounts_.Proven(number, token, address);
    } catch (const protocol::Refusal& refusal) {
      return refusal.what();
    }
  }

  int drawn_ = 0;
  std::string token_;  ///< that the logins bring
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

// A whole school has one address: whoever knows the password gives the try back.
TEST_F(AccountsTest, SlowsDownAnAddressThatGuessesAndNobodyWhoHasAToken) {
  const std::string token = token_ = accounts_.LogIn(kNumber, "right", {}).token;
  for (int i = 0; i < 35; ++i) ASSERT_EQ(Try(kNumber, "right", "tokens"), kNumber) << "costs no try";
  const struct {
    const char* what;
    std::function<std::string(const std::string& address)> Guess;
    const char* answer;
  } guesses[] = {
      {"passwords of many numbers",
       [&](const auto& address) { return Try("77" + std::to_string(++drawn_), "x", address); },
       "ERR_NOTFOUND"},
      {"tokens", [&](const auto& address) { return TryToken(kNumber, "guess", address); }, "ERR_LOGIN"},
      {"numbers for a token", [&](const auto& address) { return TryToken("4711", token, address); },
       "ERR_LOGIN"},
  };
  for (const auto& [what, Guess, answer] : guesses) {
    const std::string address = what;
    for (int i = 0; i < 30; ++i) EXPECT_EQ(Guess(address), answer) << what;
    EXPECT_EQ(Try(kNumber, "right", address), "ERR_TRY_LATER") << what;
    EXPECT_EQ(TryToken(kNumber, token, address), kNumber) << what;
    EXPECT_EQ(Try(kNumber, "right", "192.0.2.2"), kNumber) << what;
    now_ += std::chrono::seconds(6);
    EXPECT_EQ(Try(kNumber, "right", address), kNumber) << what;
  }
}

TEST_F(AccountsTest, GivesEachProgramATokenOfItsAccountUntilThePasswordChanges) {
  token_ = accounts_.LogIn(kNumber, "right", {}).token;
  EXPECT_THAT(token_, testing::MatchesRegex("[0-9A-Za-z]{43}"));
  EXPECT_EQ(ReadFile(folder_ / "server.db-wal").find(token_), std::string::npos) << "kept as a hash alone";
  EXPECT_EQ(accounts_.LogIn(kNumber, "right", {"", token_, ""}).token, "") << "one a computer";
  EXPECT_NE(accounts_.LogIn(kNumber, "right", {"", "another", ""}).token, "");
  const LoggedIn other = accounts_.Make("other one");
  EXPECT_EQ(accounts_.OwnerOf({"", other.token, ""}), other.account);
  EXPECT_EQ(TryToken(kNumber, token_, ""), kNumber);
  for (const std::string& wrong : {std::string(), other.token, token_ + "x", token_.substr(1)}) {
    EXPECT_EQ(TryToken(kNumber, wrong, ""), "ERR_LOGIN") << wrong;
  }
  accounts_.Ensure(kNumber, "right");
  EXPECT_EQ(TryToken(kNumber, token_, ""), kNumber) << "the password is the same";
  accounts_.Ensure(kNumber, "changed");
  EXPECT_EQ(TryToken(kNumber, token_, ""), "ERR_LOGIN");
  EXPECT_EQ(TryToken(other.account, other.token, ""), other.account) << "of another account";
}

TEST_F(AccountsTest, TakesNewPasswordsThatCanBeTypedAndOldOnesAsTheyAre) {
  accounts_.Await("S1");
  store_->PutAccount("old", HashPassword("密"));
  EXPECT_EQ(Try("old", "密"), "old");
  for (const char* bad : {"", "abc", " abcd", "密碼密碼"}) {
    EXPECT_THROW(accounts_.SetFirstPassword("S1", bad, ""), protocol::Refusal) << bad;
    EXPECT_THROW(accounts_.Make(bad), protocol::Refusal) << bad;
  }
  EXPECT_TRUE(accounts_.SetFirstPassword("S1", "a b%", ""));
  EXPECT_FALSE(accounts_.SetFirstPassword("S1", "other", ""));
  EXPECT_EQ(Try("S1", "a b%"), "S1");
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
