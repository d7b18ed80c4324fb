#include "base/files.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <optional>
#include <string>
#include <thread>

#include "base/file_lock.h"
#include "base/posix_files.h"
#include "tests/support/failing_files.h"
#include "tests/support/temp_home.h"

using namespace marovane;

namespace base {
namespace {

using namespace std::string_literals;
using namespace ::testing;
namespace fs = std::filesystem;

class FilesTest : public ::testing::Test {
 protected:
  static unsigned Mode(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions()) & 0777;
  }

  TempHome home_;
  PosixFiles files_;
  const fs::path file_ = home_ / "設定 setup.set";
};

TEST_F(FilesTest, LeavesTheOldOrTheNewFileWholeWhereverItIsKilled) {
  const std::string after = "new and longer than before\r\n";
  bool isDone = false;
  int step = 1;
  for (; !isDone && step < 100; ++step) {
    files_.Write(file_, "old", true);
    FailingFiles failing(files_);
    failing.fault.KillAt(step);
    try {
      RewriteFile(failing, file_, after, true);
      isDone = true;
    } catch (const Killed&) {
      EXPECT_EQ(files_.Read(file_), "old") << step;
    }
    // The next start finds whatever the kill has left, and writes all the same.
    RewriteFile(files_, file_, after, true);
    EXPECT_EQ(files_.Read(file_), after);
    EXPECT_EQ(Mode(file_), 0600U);
  }
  EXPECT_TRUE(isDone);
  EXPECT_GT(step, 4);
}

TEST_F(FilesTest, LeavesTheOldFileWhereAStepFails) {
  for (int step = 1; step <= 4; ++step) {
    files_.Write(file_, "old", false);
    FailingFiles failing(files_);
    failing.fault.FailAt(step);
    EXPECT_THROW(RewriteFile(failing, file_, "new", false), Error) << step;
    EXPECT_EQ(files_.Read(file_), "old");
    EXPECT_THAT(files_.List(home_.Path()), ElementsAre(file_.filename().string()));
  }
}

TEST_F(FilesTest, ReadsWhatItWroteByteForByte) {
  for (const std::string& bytes : {""s, "a\0b\r\n"s, "\xA4\x40"s, std::string(300'000, 'x')}) {
    files_.Write(file_, bytes, false);
    EXPECT_EQ(files_.Read(file_), bytes);
    files_.Append(file_, "tail");
    EXPECT_EQ(files_.Read(file_), bytes + "tail");
  }
  CopyFile(files_, file_, home_ / "copy");
  EXPECT_EQ(files_.Read(home_ / "copy"), files_.Read(file_));
}

TEST_F(FilesTest, GivesFilesAndFoldersTheirModes) {
  const mode_t mask = umask(022);
  files_.Write(file_, "open", false);
  EXPECT_EQ(Mode(file_), 0644U);
  files_.Write(file_, "secret", true);
  EXPECT_EQ(Mode(file_), 0600U);
  files_.CreateFolder(home_ / "deep" / "private", true);
  EXPECT_EQ(Mode(home_ / "deep"), 0700U);
  EXPECT_EQ(Mode(home_ / "deep" / "private"), 0700U);
  files_.CreateFolder(home_ / "open" / "folder", false);
  EXPECT_EQ(Mode(home_ / "open" / "folder"), 0755U);
  files_.CreateFolder(home_ / "open", true);  // exists: stays open to others
  EXPECT_EQ(Mode(home_ / "open"), 0755U);
  umask(mask);
}

TEST_F(FilesTest, KnowsFilesFromFoldersAndFromWhatIsGone) {
  files_.Write(file_, "", false);
  EXPECT_TRUE(files_.FileExists(file_) && !files_.FolderExists(file_));
  EXPECT_TRUE(files_.FolderExists(home_.Path()) && !files_.FileExists(home_.Path()));
  EXPECT_FALSE(files_.FileExists(file_ / "below a file"));
  fs::create_symlink(home_ / "gone", home_ / "dangling");
  EXPECT_FALSE(files_.FileExists(home_ / "dangling"));
  files_.Delete(file_);
  EXPECT_FALSE(files_.FileExists(file_));
}

TEST_F(FilesTest, ListsFilesAloneInOrderAlsoBelowALinkedFolder) {
  fs::create_directory_symlink(home_ / "data", home_ / "linked");
  for (const char* const name : {"b.htm", "A.htm", "ä.htm"})
    RewriteFile(files_, home_ / "linked" / name, "", false);
  files_.CreateFolder(home_ / "linked" / "folder", false);
  EXPECT_THAT(files_.List(home_ / "data"), ElementsAre("A.htm", "b.htm", "ä.htm"));
  EXPECT_THAT(files_.List(home_ / "missing"), ElementsAre());
}

TEST_F(FilesTest, NamesThePathAndTheReasonOfAFailure) {
  const fs::path lost = home_ / "missing" / "file";
  const auto readable =
      ThrowsMessage<Error>(AllOf(HasSubstr(lost.string()), HasSubstr("No such file or directory")));
  EXPECT_THAT([&] { static_cast<void>(files_.Read(lost)); }, readable);
  EXPECT_THAT([&] { files_.Write(lost, "", false); }, readable);
  EXPECT_THAT([&] { files_.Append(lost, ""); }, readable);
  EXPECT_THAT([&] { files_.Delete(lost); }, readable);
  EXPECT_THAT([&] { files_.Rename(lost, file_); }, readable);
  EXPECT_THROW(files_.Write(home_.Path(), "", false), Error);
  EXPECT_THROW(static_cast<void>(files_.Read(home_.Path())), Error);
  files_.Write(file_, "", false);
  EXPECT_THROW(files_.CreateFolder(file_ / "below", false), Error);
}

TEST(FileLock, WaitsForItsHolderAsLongAsItMay) {
  const TempHome home;
  const auto file = home.Path() / "folder" / "lock";
  std::optional<FileLock> holder(file);
  EXPECT_TRUE(holder->IsHeld());
  EXPECT_FALSE(FileLock(file).IsHeld());
  EXPECT_FALSE(FileLock(file, std::chrono::milliseconds{50}).IsHeld());
  const std::jthread leaving([&] { holder.reset(); });
  EXPECT_TRUE(FileLock(file, std::chrono::minutes{1}).IsHeld());
}

}  // namespace
}  // namespace base
