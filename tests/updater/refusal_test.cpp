// Nothing that is not exactly what the owner published gets in.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <functional>

#include "base/sha256.h"
#include "tests/updater/updater_fixture.h"
#include "updater/signature.h"

namespace updater {

namespace {

using namespace ::testing;

class RefusalTest;
using Act = std::function<void(RefusalTest&)>;
using Alter = std::function<std::string(std::string)>;

struct Harm {
  const char *what, *reported;
  Act act;
};
void PrintTo(const Harm& harm, std::ostream* out) { *out << harm.what; }

class RefusalTest : public InstalledTest, public ::testing::WithParamInterface<Harm> {
 public:
  void AlterPage(const Alter& alter) { Put(Page(), alter(ReadFile(Page()))); }
  void AlterPublishedList(const Alter& alter) { Put(list_, alter(ReadFile(list_))); }
  void SignAltered(const std::string& from, const std::string& to) {
    std::string list = List();
    const auto at = list.find(from);
    ASSERT_NE(at, std::string::npos);
    SignList(list.replace(at, from.size(), to));
  }
  void SignWithAnotherKey() { Put(list_, Signed(List(), MakeKeyPair().secret)); }
  void RemoveKey() { Remove(installation / "current/share/marovane/update.key"); }
  void LimitFiles() {
    Publish({.version = "1.2.0", .page = std::string(300'000, 'x')});
    before = "ulimit -f 200; " + before;
  }
  void RemovePage() { Remove(Page()); }
  void RemoveList() { Remove(list_); }
  using UpdaterTest::Publish, UpdaterTest::SignList;

  static constexpr const char* kPage = "the page of 1.1.0";
  const fs::path list_ = www / "mrv_updater.list";

 private:
  static void Remove(const fs::path& path) { ASSERT_TRUE(fs::remove(path)); }
  fs::path Page() const {
    base::Sha256 digest;
    digest.Add(kPage);
    return www / "files" / digest.Digits();
  }
  std::string List() const {
    const std::string published = ReadFile(list_);
    return published.substr(published.find('\n') + 1);
  }
};

TEST_P(RefusalTest, IsReportedAndLeavesEverythingAsItWas) {
  Publish({.version = "1.1.0", .page = kPage});
  GetParam().act(*this);
  const auto installed = Installed();
  const base::RunResult run = RunUpdater("mrv_updater");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.errors, HasSubstr(GetParam().reported));
  EXPECT_EQ(Note() + "\n", run.errors) << "the program shows it at its next start";
  EXPECT_EQ(Installed(), installed);
  EXPECT_EQ(Current(), "1.0.0");
}

Act OnPage(const Alter& alter) {
  return [=](RefusalTest& test) { test.AlterPage(alter); };
}
Act OnList(const Alter& alter) {
  return [=](RefusalTest& test) { test.AlterPublishedList(alter); };
}
Act Signs(const char* from, const char* to) {
  return [=](RefusalTest& test) { test.SignAltered(from, to); };
}
Act Publishes(const ScriptTree& tree) {
  return [=](RefusalTest& test) { test.Publish(tree); };
}
void SignMoreThanTheDiskHolds(RefusalTest& test) {
  std::string list = "marovane 1\nversion 1.2.0\n";
  for (int i = 0; i < 20'000; ++i) {
    list += "- 1073741824 " + std::string(64, 'a') + " share/" + std::to_string(i) + "\n";
  }
  test.SignList(list);
}

constexpr const char* kDoesNotRun = "marovane-terminal 在這台電腦上無法正常執行";
constexpr const char* kPagePath = "share/marovane/ui/page.htm";

const Harm kHarms[] = {
    {"altered byte", "內容和清單不符", OnPage([](std::string bytes) { return bytes.replace(3, 1, "?"); })},
    {"cut file", "內容和清單不符", OnPage([](const std::string& bytes) { return bytes.substr(0, 5); })},
    {"longer file", "比清單所說的還大", OnPage([](const std::string& bytes) { return bytes + "x"; })},
    {"missing file", "更新資料夾裡沒有 files/", &RefusalTest::RemovePage},
    {"missing list", "更新資料夾裡沒有 mrv_updater.list", &RefusalTest::RemoveList},
    {"altered list", "簽章不正確",
     OnList([](std::string list) { return list.replace(list.find("1.1.0"), 5, "1.2.0"); })},
    {"cut list", "簽章不正確",
     OnList([](const std::string& list) { return list.substr(0, list.size() - 80); })},
    {"another key", "簽章不正確", &RefusalTest::SignWithAnotherKey},
    {"no signature", "沒有簽章",
     OnList([](const std::string& list) { return list.substr(list.find('\n') + 1); })},
    {"no key", "沒有驗證更新用的金鑰", &RefusalTest::RemoveKey},
    {"older version", "比現在的版本 1.0.0 還舊", Publishes({.version = "0.9.9"})},
    {"same version", "沒有比現在更新的版本", Publishes({.version = "1.0.0"})},
    {"way out of the folder", "清單的內容不正確", Signs(kPagePath, "share/../../../../escaped.htm")},
    {"place outside", "清單的內容不正確", Signs(kPagePath, "/tmp/escaped.htm")},
    {"version that is a path", "清單的內容不正確", Signs("version 1.1.0", "version ../../x")},
    {"full disk", "磁碟空間不足", &RefusalTest::LimitFiles},
    {"more than the disk holds", "磁碟空間不足", SignMoreThanTheDiskHolds},
    {"program of another version", kDoesNotRun, Signs("version 1.1.0", "version 1.2.0")},
    {"failing self-check", kDoesNotRun, Publishes({.version = "1.2.0", .selfCheck = "exit 3"})},
    {"crashing program", kDoesNotRun, Publishes({.version = "1.2.0", .selfCheck = "kill -SEGV $$"})},
};

INSTANTIATE_TEST_SUITE_P(Harms, RefusalTest, ::testing::ValuesIn(kHarms), [](const auto& info) {
  std::string name = info.param.what;
  std::ranges::replace_if(
      name, [](char sign) { return !std::isalnum(static_cast<unsigned char>(sign)); }, '_');
  return name;
});

TEST_F(InstalledTest, InstallationOfAPackageManagerIsLeftToIt) {
  Publish({.version = "1.1.0"});
  const fs::path plain = home / "usr/lib/marovane/share/marovane";
  fs::create_directories(plain);
  Put(working / "Tessaroon/setup.txt", plain.string() + "\r\n");
  for (const char* const word : {"mrv_updater", "mrv_reinstaller"}) {
    EXPECT_THAT(RunUpdater(word).errors, HasSubstr("請用當初安裝它的方式更新"));
  }
  EXPECT_TRUE(fs::is_empty(plain));
}

TEST_F(InstalledTest, WhoMayNotWriteLearnsWhoCan) {
  Publish({.version = "1.1.0"});
  const auto installed = Installed();
  if (geteuid() == 0) {
    fs::permissions(home.Path(), fs::perms::others_exec | fs::perms::others_read, fs::perm_options::add);
    before = "setpriv --reuid=65534 --regid=65534 --clear-groups " + before;
  } else {
    fs::permissions(installation, fs::perms::owner_read | fs::perms::owner_exec);
  }
  const base::RunResult run = RunUpdater("mrv_updater");
  fs::permissions(installation, fs::perms::owner_all);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.errors, AllOf(HasSubstr("您沒有寫入"), HasSubstr(installation.string())));
  EXPECT_EQ(Installed(), installed);
}

TEST_F(InstalledTest, WordsOtherThanItsOwnAreUsage) {
  EXPECT_EQ(RunUpdater("mrv_update").status, 64);
  EXPECT_THAT(RunUpdater("mrv_updater", "").errors, HasSubstr("沒有更新主機"));
  EXPECT_THAT(Shell(updaterCopy.string() + " mrv_rollback").errors, HasSubstr("沒有可以回復的舊版本"));
}

}  // namespace

}  // namespace updater
