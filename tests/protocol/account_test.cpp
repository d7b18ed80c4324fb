#include "protocol/account.h"

#include <gtest/gtest.h>

namespace protocol {
namespace {

TEST(Account, TakesDashesAndBlanksOutOfANumber) {
  EXPECT_EQ(CleanAccount(" 12-34 5-"), "12345");
  for (const char* number : {"1234567890", "a.b_C1"}) EXPECT_TRUE(IsAccountNumber(CleanAccount(number)));
  for (const std::string number : {"", "--", "' OR 1=1", "王小明", "1/2"}) {
    EXPECT_FALSE(IsAccountNumber(CleanAccount(number))) << number;
  }
  EXPECT_TRUE(IsAccountNumber(std::string(32, '1')));
  EXPECT_FALSE(IsAccountNumber(std::string(33, '1')));
}

}  // namespace
}  // namespace protocol
