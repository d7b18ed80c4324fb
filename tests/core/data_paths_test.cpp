#include "core/data_paths.h"

#include <gmock/gmock.h>

#include "platform/run_time_error.h"
#include "tests/support/temp_home.h"

namespace marovane {

namespace {

using namespace ::testing;

class DataPathsTest : public Test {
 protected:
  /// HOME is /home/ming, and run/ of the test's own folder is the folder of the session.
  Environment With(const std::string& chosen, const std::string& tmp,
                   const std::string& dataHome = "") const {
    Environment environment;
    environment.variables = {{"HOME", "/home/ming"},
                             {"XDG_RUNTIME_DIR", session_.string() + "/"},
                             {"MAROVANE_HOME", chosen},
                             {"TMP", tmp},
                             {"XDG_DATA_HOME", dataHome}};
    return environment;
  }
  const TempHome home_;
  const std::filesystem::path session_ = home_ / "run";
};

TEST_F(DataPathsTest, RootIsWhatTheLearnerHasChosen) {
  const std::string usual = "/home/ming/.local/share/marovane";
  const struct {
    const char *chosen, *tmp, *dataHome;
    std::string root;
  } cases[] = {{"", "", "", usual},
               {"", "", "/data", "/data/marovane"},
               {"/chosen", "", "/data", "/chosen"},
               {"/chosen//", "/kept", "", "/chosen"},
               {"/", "", "", "/"},
               {"/tmp/chosen", "", "", "/tmp/chosen"},  // on purpose
               {"", "/kept", "/data", "/kept"},
               {"", "/tmpfiles", "", "/tmpfiles"},
               {"", "/tmp/../kept", "", "/tmp/../kept"}};
  for (const auto& [chosen, tmp, dataHome, root] : cases) {
    EXPECT_EQ(WorkingRoot(With(chosen, tmp, dataHome)), root) << chosen << "|" << tmp << "|" << dataHome;
    EXPECT_EQ(TemporaryRoot(With(chosen, tmp, dataHome)), "") << chosen << "|" << tmp;
  }
}

TEST_F(DataPathsTest, FoldersThatTheSystemEmptiesDoNotCount) {
  std::filesystem::create_directories(session_ / "deep");
  std::filesystem::create_symlink(session_ / "deep", home_ / "link");
  std::filesystem::create_symlink(home_ / "link", home_ / "link to link");
  const std::string session = std::filesystem::canonical(session_).string();
  const struct {
    std::string tmp, resolved;
  } cases[] = {{"/tmp", "/tmp"},
               {"/tmp/", "/tmp"},
               {"/tmp/user/1000", "/tmp/user/1000"},
               {"/home/../tmp/./user//1000/", "/tmp/user/1000"},
               {"/proc/self/root/tmp/user", "/tmp/user"},
               {"/var/tmp/ming", "/var/tmp/ming"},
               {"/dev/shm/ming", "/dev/shm/ming"},
               {"/run/user/1000", "/run/user/1000"},
               {session_ / "a/b", session + "/a/b"},
               {home_ / "link", session + "/deep"},
               {home_ / "link to link/a", session + "/deep/a"}};
  for (const auto& [tmp, resolved] : cases) {
    EXPECT_EQ(WorkingRoot(With("", tmp)), "/home/ming/.local/share/marovane") << tmp;
    EXPECT_EQ(TemporaryRoot(With("", tmp)), resolved) << tmp;
    EXPECT_EQ(TemporaryRoot(With("/chosen", tmp)), "") << "who has chosen a root has no records elsewhere";
  }
  std::filesystem::create_symlink("/usr", session_ / "to a real place");
  EXPECT_EQ(WorkingRoot(With("", session_ / "to a real place")), session_ / "to a real place");
  EXPECT_EQ(TemporaryRoot(With("", session_ / "marovane", session_)), "")
      << "the data folder itself is no find";
}

TEST_F(DataPathsTest, RootMustBeAnAbsolutePath) {
  for (const char* const chosen : {"data", "./data", "~/data"}) {
    EXPECT_THAT([&] { WorkingRoot(With(chosen, "")); },
                ThrowsMessage<RunTimeError>(AllOf(HasSubstr("MAROVANE_HOME"), HasSubstr(chosen))));
  }
}

}  // namespace

}  // namespace marovane
