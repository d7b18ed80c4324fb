#include "server/accounts/accounts.h"

#include <gtest/gtest.h>

#include "protocol/refusal.h"
#include "tests/server/temp_folder.h"

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

TEST_F(AccountsTest, TellsNumbersAndPasswordsApart) {
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
}

TEST_F(AccountsTest, KeepsNoPasswordInClear) {
  EXPECT_EQ(Try(kNumber, "right"), kNumber);
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
  EXPECT_EQ(Try(kNumber, "right"), kNumber);
  store_->PutUserSettings(kNumber, "$FontSize:BIG");
  const auto hash = store_->PasswordHash(kNumber);
  accounts_.Ensure(kNumber, "right");
  EXPECT_EQ(accounts_.Known(kNumber), kNumber);
  EXPECT_EQ(store_->PasswordHash(kNumber), hash);
  accounts_.Ensure(kNumber, "other");
  EXPECT_EQ(Try(kNumber, "other"), kNumber);
  EXPECT_EQ(Try(kNumber, "right"), "ERR_WRONG_PASSWORD");
  EXPECT_EQ(store_->UserSettings(kNumber), "$FontSize:BIG");
}

}  // namespace
}  // namespace server
