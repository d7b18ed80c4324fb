#include "core/key_value_file.h"

#include <random>
#include <regex>

#include "base/cp950.h"
#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

class SetFileTest : public CoreTest {
 protected:
  std::string Read(const std::string& path, const std::string& key) {
    return ReadWriteSetFile(machine.files, path, "R", key, "");
  }
  void Write(const std::string& path, const std::string& key, const std::string& value) {
    EXPECT_EQ(ReadWriteSetFile(machine.files, path, "W", key, value), "");
  }
  static std::string Entries(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) text += "k" + std::to_string(i) + "=v\r\n";
    return text;
  }

  const std::string setup_ = app.gSetupFile;
  const std::string registry_ = app.gRegistryFile;
};

TEST_F(SetFileTest, AbsentFileReadsAsEmptyAndIsCreatedByAWrite) {
  EXPECT_EQ(Read(setup_, "Pno"), "");
  EXPECT_EQ(ReadWriteSetFile(machine.files, setup_, "X", "Pno", "1"), "");
  EXPECT_EQ(Content(setup_), std::nullopt);
  Write(setup_, "Pno", "1");
  EXPECT_EQ(Content(setup_), "Pno=1\r\n");
  EXPECT_EQ(std::filesystem::status(setup_).permissions(), std::filesystem::perms(0600));
}

TEST_F(SetFileTest, RegistryKeepsItsMarkerInFront) {
  const struct {
    const char *name, *before, *after;
  } cases[] = {
      {"registry.set", "", "**settings for tolvex=\r\nk=v\r\n"},
      {"registry.set", "foo=1\r\n", "**settings for tolvex=\r\nfoo=1\r\nk=v\r\n"},
      {"registry.set", "**settings for tolvex=\r\nk=1\r\n", "**settings for tolvex=\r\nk=v\r\n"},
      {"registry.set", "xxsettings for tolvex\r\n", "xxsettings for tolvex=\r\nk=v\r\n"},
      {"registry.set", "ngs for tolvex=\r\n", "**settings for tolvex=\r\nngs for tolvex=\r\nk=v\r\n"},
      {"registry.set", "a=1\r\n**settings for tolvex=\r\n",
       "**settings for tolvex=\r\na=1\r\n**settings for tolvex=\r\nk=v\r\n"},
      {"registry_w.set", "foo=1\r\n", "foo=1\r\nk=v\r\n"},
      {"setup.set", "foo=1\r\n", "foo=1\r\nk=v\r\n"},
  };
  for (const auto& [name, before, after] : cases) {
    const std::string path = app.gEngineDir + name;
    Put(path, before);
    Write(path, "k", "v");
    EXPECT_EQ(Content(path), after) << before;
  }
}

TEST_F(SetFileTest, HoldsNinetyNineEntriesWhileItIsWritten) {
  const struct {
    int entries;
    const char *mode, *key;
    bool raises;
    int left;  // entries afterwards
  } cases[] = {
      {98, "W", "new", false, 99},  {99, "W", "new", false, 100},   {99, "W", "k99", false, 99},
      {99, "R", "new", false, 99},  {100, "R", "k100", false, 100}, {100, "R", "new", true, 100},
      {100, "W", "new", true, 100}, {100, "W", "k1", true, 100},    {100, "X", "", false, 100},
      {101, "R", "k1", true, 101},  {101, "W", "k1", true, 101},    {101, "X", "", true, 101},
  };
  for (const auto& [entries, mode, key, raises, left] : cases) {
    Put(setup_, Entries(entries));
    const auto call = [&, mode = mode, key = key] {
      ReadWriteSetFile(machine.files, setup_, mode, key, "v");
    };
    if (raises) {
      EXPECT_THROW(call(), RunTimeError) << entries << mode << key;
    } else {
      EXPECT_NO_THROW(call()) << entries << mode << key;
    }
    const std::string text = Content(setup_).value();
    EXPECT_EQ(std::ranges::count(text, '\n'), left) << entries << mode << key;
  }
  Put(setup_, Entries(100));
  EXPECT_THROW(Write(setup_, "k7", "fresh"), RunTimeError);
  EXPECT_EQ(Read(setup_, "k7"), "fresh") << "a full file gets the value before the walk passes its end";
  Put(setup_, Entries(99) + "\r\n  \r\n\r\n");  // blank lines are no entries
  EXPECT_EQ(Read(setup_, "absent"), "");
}

TEST_F(SetFileTest, TextsAreBig5AndForeignBytesStay) {
  const std::string title = base::ToCp950("學歷");
  Put(setup_,
      title + "=" + base::ToCp950("大學") + "\r\nodd=\xFF\x31 \r\ncut=" + base::ToCp950("中") + "\xA4\r\n");
  EXPECT_EQ(Read(setup_, "學歷"), "大學");
  EXPECT_EQ(Read(setup_, "cut"), "中\uFFFD") << "half a character must not make the file unreadable";
  Write(setup_, "學歷", "碩士");
  EXPECT_EQ(Content(setup_), title + "=" + base::ToCp950("碩士") +
                                 "\r\nodd=\xFF\x31\r\ncut=" + base::ToCp950("中") + "\xA4\r\n");
}

TEST_F(SetFileTest, FileThatCannotBeOpenedIsARunTimeError) {
  std::filesystem::create_directory(setup_);
  EXPECT_THROW(Write(setup_, "Pno", "1"), RunTimeError);
  EXPECT_THROW(ResetRegistrySet(machine.files, app.gTempDir + "/missing/registry.set", "RESET"),
               RunTimeError);
  EXPECT_THROW(ResetRegistrySet(machine.files, registry_, "REWRITE_LINE1"), RunTimeError);
}

constexpr const char* kFresh =
    "**settings for tolvex=\r\ncol_suggestion=0\r\ncollocationListHtm=\r\nerrcode=0\r\nfindMistake=0\r\n"
    "qcode=0\r\nsentence=0\r\nhtm4chk=\r\nsynChk=\r\ncoursePath=\r\n";

TEST_F(SetFileTest, ResetWritesTheTenLines) {
  Put(registry_, "anything\r\n");
  ResetRegistrySet(machine.files, registry_, "reset");
  EXPECT_EQ(Content(registry_), "anything\r\n") << "words are compared with case";
  ResetRegistrySet(machine.files, registry_, "RESET");
  EXPECT_EQ(Content(registry_), kFresh);
}

TEST_F(SetFileTest, FirstLineIsRepairedHoweverMuchOfItIsGone) {
  const std::string marker(kRegistryMarker);
  const struct {
    std::string before, after;
  } cases[] = {
      {marker + "\r\na=1\r\n", marker + "\r\na=1\r\n"},
      {"ettings for tolvex=\r\na=1\r\n", marker + "\r\na=1\r\n"},
      {"ngs for tolvex=\r\na=1\r\n", marker + "\r\na=1\r\n"},
      {"gs for tolvex=\r\na=1\r\n", marker + "\r\ngs for tolvex=\r\na=1\r\n"},
      {"\r\n  a = 1  \r\n\r\nx=ngs for tolvex=\r\n", marker + "\r\na = 1\r\n"},
      {"", marker + "\r\n"},
  };
  for (const auto& [before, after] : cases) {
    Put(registry_, before);
    ResetRegistrySet(machine.files, registry_, "REWRITE_LINE1");
    EXPECT_EQ(Content(registry_), after) << before;
    EXPECT_EQ(Content(app.gEngineDir + "registry_w.set"), std::nullopt) << "the scratch copy is gone";
  }
}

TEST_F(SetFileTest, KillOrFailureAtAnyStepLeavesTheOldOrTheNewFileWhole) {
  const std::string old = "ngs for tolvex=\r\nsentence=old\r\n";
  const struct {
    const char* name;
    std::function<void()> change;
    std::string fresh;
  } cases[] = {
      {"write", [&] { Write(registry_, "sentence", "new"); },
       std::string(kRegistryMarker) + "\r\nngs for tolvex=\r\nsentence=new\r\n"},
      {"reset", [&] { ResetRegistrySet(machine.files, registry_, "RESET"); }, kFresh},
      {"repair", [&] { ResetRegistrySet(machine.files, registry_, "REWRITE_LINE1"); },
       std::string(kRegistryMarker) + "\r\nsentence=old\r\n"},
  };
  for (const auto& [name, change, fresh] : cases) {
    for (const bool kills : {true, false}) {
      int strikes = 0;
      for (int step = 1; step < 20; ++step) {
        Put(registry_, old);
        machine.files.fault.Reset();
        kills ? machine.files.fault.KillAt(step) : machine.files.fault.FailAt(step);
        bool struck = false;
        try {
          change();
        } catch (const Killed&) {
          struck = true;
        } catch (const RunTimeError&) {
          struck = true;
        }
        EXPECT_THAT(Content(registry_), Optional(AnyOf(struck ? old : fresh, fresh)))
            << name << " struck at step " << step;
        if (!struck) break;
        ++strikes;
        machine.files.fault.Reset();
        change();
        EXPECT_EQ(Content(registry_), fresh) << name << " again after step " << step;
      }
      EXPECT_GE(strikes, 4) << name;
      EXPECT_LT(strikes, 19) << name;
    }
  }
}

/// A file as the rules have it, made in another way: by regular expressions over UTF-8 lines.
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

TEST_F(SetFileTest, AgreesWithAModelOverRandomFilesAndOperations) {
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
