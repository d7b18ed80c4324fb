#include "engine/tables/table_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

class TableFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = std::filesystem::temp_directory_path() / ("tables." + std::to_string(getpid()));
    TableWriter writer;
    writer.AddArray("numbers", std::vector<std::uint32_t>{1, 2, 3});
    writer.AddText("text", "hello");
    writer.Write(path_);
  }
  void TearDown() override { std::filesystem::remove(path_); }

  void Overwrite(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

  std::filesystem::path path_;
};

TEST_F(TableFileTest, GivesBackWhatWasWritten) {
  const TableFile tables(path_);
  const auto numbers = tables.Array<std::uint32_t>("numbers");
  EXPECT_EQ(std::vector<std::uint32_t>(numbers.begin(), numbers.end()),
            (std::vector<std::uint32_t>{1, 2, 3}));
  EXPECT_EQ(tables.Text("text"), "hello");
  EXPECT_THROW(tables.Text("nothing"), std::runtime_error);
  EXPECT_THROW(tables.Array<std::uint64_t>("text"), std::runtime_error);
}

TEST_F(TableFileTest, RefusesEveryCutAndEveryChangedByte) {
  const std::string whole = ReadText(path_);
  for (std::size_t size = 0; size < whole.size(); size += 7) {
    Overwrite(whole.substr(0, size));
    EXPECT_THROW(TableFile{path_}, std::runtime_error) << size;
  }
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string changed = whole;
    changed[at] = static_cast<char>(changed[at] ^ 0x20);
    Overwrite(changed);
    EXPECT_THROW(TableFile{path_}, std::runtime_error) << at;
  }
}

}  // namespace
}  // namespace tolvex::test
