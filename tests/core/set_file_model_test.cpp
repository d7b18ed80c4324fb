// A few hundred random operations on random files, against a model made in another way.
#include <random>
#include <regex>

#include "base/cp950.h"
#include "core/key_value_file.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

/// The file as the rules have it, by regular expressions over UTF-8 lines.
class Model {
 public:
  explicit Model(bool isRegistry) : isRegistry_(isRegistry) {}

  void Load(const std::string& text) {
    static const std::regex entry("^ *([^=]*?) *= *([^=]*?) *(=.*)?$");
    static const std::regex line("([^\r\n]*)\r\n");
    lines_.clear();
    for (std::sregex_iterator at(text.begin(), text.end(), line), end; at != end; ++at) {
      const std::string one = (*at)[1];
      std::smatch parts;
      if (std::regex_match(one, parts, entry)) {
        lines_.emplace_back(parts[1], parts[2]);
      } else if (!std::regex_match(one, std::regex(" *"))) {
        lines_.emplace_back(one, "");
      }
    }
  }

  std::string Read(const std::string& key) const {
    for (const auto& [name, value] : lines_) {
      if (name == key) return value;
    }
    return "";
  }

  /// The text of the file after the write.
  std::string Write(const std::string& key, const std::string& value) const {
    std::string text;
    const bool hasMarker =
        !lines_.empty() && lines_[0].first.find("settings for tolvex") != std::string::npos;
    if (isRegistry_ && !hasMarker) text = "**settings for tolvex=\r\n";
    bool found = false;
    for (const auto& [name, old] : lines_) {
      const bool isIt = !found && name == key;
      found = found || isIt;
      if (!name.empty()) text += name + "=" + (isIt ? value : old) + "\r\n";
    }
    return found || key.empty() ? text : text + key + "=" + value + "\r\n";
  }

 private:
  bool isRegistry_;
  std::vector<std::pair<std::string, std::string>> lines_;
};

std::string Any(std::mt19937& random, const std::vector<std::string>& signs, unsigned most) {
  std::string text;
  for (unsigned left = random() % (most + 1); left > 0; --left) text += signs[random() % signs.size()];
  return text;
}

using SetFileModelTest = CoreTest;

TEST_F(SetFileModelTest, AgreesOverRandomFilesAndOperations) {
  std::mt19937 random(20261105);
  const std::vector<std::string> lineSigns{"a", "b", "=", " ", "中", "\t", "'", "**settings for tolvex"};
  const std::vector<std::string> keySigns{"a", "b", "中"};
  const std::vector<std::string> valueSigns{"a", "b", "學", "’"};
  int found = 0;
  for (int file = 0; file < 60; ++file) {
    const bool isRegistry = file % 2 == 0;
    const std::string path = isRegistry ? app.gRegistryFile : app.gSetupFile;
    Model model(isRegistry);
    std::string text;
    for (unsigned lines = random() % 9; lines > 0; --lines) text += Any(random, lineSigns, 7) + "\r\n";
    Put(path, base::ToCp950(text));
    model.Load(text);
    for (int operation = 0; operation < 10; ++operation) {
      const std::string key = Any(random, keySigns, 1);
      EXPECT_EQ(ReadWriteSetFile(machine.files, path, "R", key, ""), model.Read(key)) << text << key;
      if (!model.Read(key).empty()) ++found;
      if (operation % 2 == 0) continue;
      const std::string value = Any(random, valueSigns, 3);
      ReadWriteSetFile(machine.files, path, "W", key, value);
      const std::string expected = model.Write(key, value);
      ASSERT_EQ(base::FromCp950(Content(path).value()), expected) << text << key;
      text = expected;
      model.Load(text);
    }
  }
  EXPECT_GT(found, 60) << "the random keys must often be there";
}

}  // namespace

}  // namespace marovane
