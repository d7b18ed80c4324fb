#include "core/message_catalogue.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace {

using ::testing::IsEmpty;
using ::testing::Not;

TEST(MessageCatalogue, HoldsTheTextsInTheirTables) {
  EXPECT_EQ(MessageText("1"), "目前網路中斷或傳輸品質不佳，請檢查網路連線");
  EXPECT_EQ(MessageText("14021"),
            "本句子有要您注意的地方 (橘色部份)\r\n請檢查是否要修正……\r\n\r\n您要修正此句子嗎？");
  EXPECT_EQ(ProgressText("3002"), "正在上傳造句的分析資料中....\r\n\r\n結束後會自動關閉程式");
  for (const char* unknown : {"", "3000", "01", "1 ", "2", "99999"}) EXPECT_EQ(MessageText(unknown), "");
  for (const char* unknown : {"", "1", "0", "3009", "10004"}) EXPECT_EQ(ProgressText(unknown), "");
}

/// Numbers that the program's sources give to some procedures.
std::set<std::string> NumbersInCalls(const char* procedures) {
  const std::regex call(std::string("\\b(?:") + procedures + ")\\([^;\"]*\"(\\d+)\",\\s*\\d");
  std::set<std::string> numbers;
  for (const auto& file : std::filesystem::recursive_directory_iterator(SOURCE_FOLDER)) {
    if (file.path().extension() != ".cpp") continue;
    std::stringstream source;
    source << std::ifstream(file.path()).rdbuf();
    const std::string text = source.str();
    for (std::sregex_iterator at(text.begin(), text.end(), call), end; at != end; ++at) {
      numbers.insert((*at)[1]);
    }
  }
  return numbers;
}

TEST(MessageCatalogue, HasEveryNumberThatACallerUses) {
  const auto messages = NumbersInCalls("MessageBox|Ask");
  EXPECT_GE(messages.size(), 9U);
  for (const auto& number : messages) EXPECT_THAT(MessageText(number), Not(IsEmpty())) << number;
  const auto progress = NumbersInCalls("ProgressMsgBox");
  EXPECT_GE(progress.size(), 2U);
  for (const auto& number : progress) EXPECT_THAT(ProgressText(number), Not(IsEmpty())) << number;
}

}  // namespace
