#include "base/process.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/stat.h>

#include <csignal>

#include "base/posix_files.h"
#include "tests/support/temp_home.h"

using namespace marovane;

namespace base {
namespace {

using namespace ::testing;
namespace fs = std::filesystem;
constexpr std::chrono::seconds kPatience{60};

class ProcessTest : public ::testing::Test {
 protected:
  // A shell is only the program that is started here; nothing starts through one.
  ProcessStart Shell(const std::string& script) const { return {"/bin/sh", {"-c", script}, home_.Path()}; }
  static RunResult Run(const ProcessStart& start, int input = -1) {
    return RunToEnd(start, kPatience, input).value_or(RunResult{-1, "", "it does not end"});
  }

  TempHome home_;
  PosixFiles files_;
};

TEST_F(ProcessTest, RefusesAProgramThatCannotStart) {
  files_.Write(home_ / "no program", "text", false);
  EXPECT_THROW(Process({home_ / "missing.exe"}), Error);
  EXPECT_THROW(Process({home_ / "no program"}), Error);
  EXPECT_THROW(Process({"/bin/true", {}, home_ / "missing"}), Error);
}

TEST_F(ProcessTest, PassesArgumentsAsTheyAreAndWorksInTheFolder) {
  const std::string odd = "C,1 $HOME 'a' \"b\" ;文 *";
  EXPECT_EQ(Run({"sh", {"-c", R"(printf '%s ' "$1"; pwd)", "sh", odd}, home_.Path()}).output,
            odd + " " + fs::canonical(home_.Path()).string() + "\n");
}

TEST_F(ProcessTest, GivesAChildItsStreamsAndNoneOfOurDescriptors) {
  const FileDescriptor leak(dup2(open("/dev/zero", O_RDONLY), 77));
  const std::string out =
      Run(Shell("for fd in /proc/self/fd/*; do readlink \"$fd\"; done; ls /proc/self/fd")).output;
  EXPECT_THAT(out, AllOf(HasSubstr("/dev/null\n"), Not(HasSubstr("\n77\n")), Not(HasSubstr("/dev/zero"))));
  Pipe input;
  ASSERT_EQ(write(input.writeEnd.Get(), "word", 4), 4);
  input.writeEnd.Close();
  EXPECT_EQ(Run(Shell("cat"), input.readEnd.Get()).output, "word");
}

TEST_F(ProcessTest, PassesTheEnvironmentThatIsMeant) {
  setenv("MAROVANE_TEST", "ours", 1);
  auto start = Shell("echo $MAROVANE_TEST $OTHER");
  EXPECT_EQ(Run(start).output, "ours\n");
  start.environment = std::vector<std::string>{"OTHER=given"};
  EXPECT_EQ(Run(start).output, "given\n");
  unsetenv("MAROVANE_TEST");
}

TEST_F(ProcessTest, IgnoresAndBlocksNoSignalOfOursInAChild) {
  sigset_t held;
  sigemptyset(&held);
  sigaddset(&held, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &held, nullptr);
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_EQ(Run(Shell("kill -TERM $$")).status, 128 + SIGTERM);
  EXPECT_EQ(Run(Shell("kill -PIPE $$")).status, 128 + SIGPIPE);
  std::signal(SIGPIPE, before);
  pthread_sigmask(SIG_UNBLOCK, &held, nullptr);
}

TEST_F(ProcessTest, SaysHowAProgramEndedAndAllThatItWrote) {
  const std::string much = "head -c 300000 /dev/zero";
  const RunResult run = Run(Shell(much + " & " + much + " >&2; wait; exit 3"));
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(run.output.size(), 300'000U);
  EXPECT_EQ(run.errors.size(), 300'000U);
  EXPECT_EQ(Run(Shell("kill -SEGV $$")).status, 128 + SIGSEGV);
}

TEST_F(ProcessTest, WaitsForAnEndAndKills) {
  EXPECT_FALSE(RunToEnd({"sleep", {"600"}}, std::chrono::milliseconds{1}));
  Process process({"sleep", {"600"}});
  EXPECT_EQ(process.Wait(std::chrono::milliseconds{1}), std::nullopt);
  process.Kill();
  EXPECT_THAT(process.Wait(kPatience), Optional(128 + SIGKILL));
  EXPECT_EQ(kill(process.Id(), 0), -1) << "waited for, so that no zombie stays";
}

TEST_F(ProcessTest, EndsAWholeSession) {
  ASSERT_EQ(mkfifo((home_ / "pipe").c_str(), 0600), 0);
  FileDescriptor pipe(open((home_ / "pipe").c_str(), O_RDONLY | O_NONBLOCK));
  pollfd polled{pipe.Get(), 0, 0};
  LineReader reader(std::move(pipe));
  auto start = Shell("(echo ready; sleep 600) > pipe & sleep 600");
  start.hasOwnSession = true;
  Process process(start);
  EXPECT_EQ(reader.ReadLine(kPatience), "ready");
  process.Kill();
  EXPECT_TRUE(process.Wait(kPatience));
  EXPECT_EQ(poll(&polled, 1, 60'000), 1) << "somebody still holds the other end";
}

TEST_F(ProcessTest, ReadsLinesUpToTheLastOne) {
  Pipe pipe;
  LineReader reader(std::move(pipe.readEnd));
  ASSERT_EQ(write(pipe.writeEnd.Get(), "root=http\r\n\ntw", 14), 14);
  EXPECT_EQ(reader.ReadLine(kPatience), "root=http");
  EXPECT_EQ(reader.ReadLine(kPatience), "");
  EXPECT_EQ(reader.ReadLine(std::chrono::milliseconds{1}), std::nullopt) << "no whole line yet";
  ASSERT_EQ(write(pipe.writeEnd.Get(), "o\nlast", 6), 6);
  pipe.writeEnd.Close();
  EXPECT_EQ(reader.ReadLine(kPatience), "two");
  EXPECT_EQ(reader.ReadLine(kPatience), "last");
  EXPECT_EQ(reader.ReadLine(kPatience), std::nullopt);
}

}  // namespace
}  // namespace base
