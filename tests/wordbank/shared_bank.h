// One mapped word bank and one tagger for all tests of this program, and folders that go away again.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/tagger/tagger.h"
#include "engine/wexbin.h"

namespace wexbin::test {

inline const WordBank& SharedBank() {
  static const WordBank bank(WORDBANK_DATA);
  return bank;
}

/// The place of a phrase in an answer, from 0; -1 when it is not there.
inline int PlaceOf(const std::string& phrase, const std::vector<Item>& items) {
  const auto at =
      std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.phrase == phrase; });
  return at == items.end() ? -1 : static_cast<int>(at - items.begin());
}

class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "wordbank_test.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& Path() const { return path_; }

  std::filesystem::path Write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
    return path_ / name;
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::filesystem::path path_;
};

}  // namespace wexbin::test
