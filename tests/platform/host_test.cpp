// What connects the program with the real machine.
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <algorithm>
#include <future>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/posix_files.h"
#include "base/utf16.h"
#include "platform/headless/poll_loop.h"
#include "platform/host/curl_http.h"
#include "platform/host/host_environment.h"
#include "platform/host/opencc.h"
#include "platform/host/posix_processes.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/support/local_server.h"
#include "tests/support/temp_home.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;

class ProcessesTest : public ::testing::Test {
 protected:
  ProcessesTest() {
    guard_.onTick = [] { throw std::logic_error("nothing woke the loop"); };
    guard_.Enabled = true;
  }
  // The test program under another name.
  fs::path MakeProgram(const std::string& name) const {
    fs::path program = home_ / name;
    fs::copy_file("/bin/sleep", program);
    return program;
  }
  /// 0 for one that is not listed.
  int FindId(const std::string& name) const {
    for (const auto& process : processes_.List()) {
      if (process.name == name) return process.id;
    }
    return 0;
  }
  void WaitForChildren() {
    loop_.WaitUntil([this] { return processes_.Children().empty(); });
  }

  TempHome home_;
  PollLoop loop_;
  PosixProcesses processes_{loop_};
  base::PosixFiles files_;
  Timer guard_{loop_, 20'000};
};

TEST_F(ProcessesTest, StartsListsAndEndsAProgram) {
  const std::string name = "my" + home_.Path().filename().string() + "tolvex2.exe";
  EXPECT_EQ(FindId(name), 0);
  const int id = processes_.Start({MakeProgram(name), {"600"}, home_.Path()});
  ASSERT_EQ(FindId(name), id);
  const auto running = processes_.List();
  EXPECT_EQ(std::ranges::find(running, id, &ProcessInfo::id)->folder, fs::canonical(home_.Path()));
  EXPECT_TRUE(processes_.Terminate(id));
  // The end of the child is the only thing that can wake this wait.
  loop_.WaitUntil([&] { return FindId(name) == 0; });
  WaitForChildren();
  EXPECT_EQ(kill(id, 0), -1);  // waited for, so that no zombie stays
  EXPECT_FALSE(processes_.Terminate(id));
}

TEST_F(ProcessesTest, NeverListsAZombieNorTerminatesAGroup) {
  const pid_t id = fork();
  ASSERT_GE(id, 0);
  if (id == 0) _exit(0);
  siginfo_t ended;
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(id), &ended, WEXITED | WNOWAIT), 0);
  const auto processes = processes_.List();
  const auto has = [&processes](int wanted) {
    return std::ranges::count(processes, wanted, &ProcessInfo::id) > 0;
  };
  EXPECT_FALSE(has(id));
  EXPECT_TRUE(has(getpid()));
  waitpid(id, nullptr, 0);
  EXPECT_FALSE(processes_.Terminate(0));
  EXPECT_FALSE(processes_.Terminate(-1));
}

TEST_F(ProcessesTest, KnowsNothingOfAProgramThatCannotStart) {
  EXPECT_THROW(processes_.Start({home_ / "missing.exe"}), RunTimeError);
  EXPECT_THROW(processes_.StartPiped({home_ / "missing.exe"}), RunTimeError);
  EXPECT_TRUE(processes_.Children().empty());
}

TEST_F(ProcessesTest, ReadsAPipedChildByLineAndLetsItSeeItsInputEnd) {
  auto child = processes_.StartPiped(
      {"/bin/sh", {"-c", "printf 'root=http\\r\\n\\nlast'; cat; touch gone"}, home_.Path()});
  EXPECT_EQ(child->ReadLine(10'000), "root=http");
  EXPECT_EQ(child->ReadLine(10'000), "");
  EXPECT_EQ(child->ReadLine(1), std::nullopt);  // no whole line yet
  EXPECT_FALSE(files_.FileExists(home_ / "gone"));
  child.reset();
  WaitForChildren();
  EXPECT_TRUE(files_.FileExists(home_ / "gone"));
}

TEST_F(ProcessesTest, LeavesAChildRunningThatOutlivesThem) {
  const std::string name = home_.Path().filename().string() + "stay.exe";
  {
    PosixProcesses passing(loop_);
    passing.Start({MakeProgram(name), {"600"}, {}});
  }
  const int id = FindId(name);
  ASSERT_GT(id, 0);
  processes_.Terminate(id);
  waitpid(id, nullptr, 0);
}

TEST(HostEnvironment, FindsTheFoldersByTheProgram) {
  setenv("MAROVANE_TEST", "a=b", 1);
  const Environment environment = ReadHostEnvironment("XQD");
  EXPECT_EQ(environment.Variable("MAROVANE_TEST"), "a=b");
  EXPECT_EQ(environment.Variable("MAROVANE_NOT_SET"), "");
  EXPECT_EQ(environment.commandLine, "XQD");
  EXPECT_TRUE(fs::exists(environment.helperFolder / "platform_test"));
  EXPECT_EQ(environment.programFolder, environment.helperFolder.parent_path() / "share" / "marovane");
}

TEST(CurlHttp, NamesTheAddressOfARequestThatFailedAndRefusesAnotherMeanwhile) {
  class PaintingLoop : public VirtualLoop {
   public:
    std::function<void()> onPaint;

   protected:
    void Block(const std::function<void()>& work) override {
      onPaint();
      work();
    }
  };
  PaintingLoop loop;
  CurlHttp http(loop);
  const auto send = [&] { http.Send({.method = "GET", .url = "ftp://127.0.0.1/"}); };
  loop.onPaint = [&] { EXPECT_THROW(send(), std::logic_error); };
  EXPECT_THAT(send, ::testing::ThrowsMessage<RunTimeError>(::testing::StartsWith("ftp://127.0.0.1/: ")));
}

TEST(OpenCc, ConvertsBothWaysEachCharacterByItself) {
  const OpenCcConverter chinese;
  EXPECT_EQ(chinese.ToTraditional("He 学习英语。"), "He 學習英語。");
  EXPECT_EQ(chinese.ToSimplified("He 學習英語。"), "He 学习英语。");
  EXPECT_EQ(chinese.ToTraditional(""), "");
  // As words, the first would become 頭髮 and the second 理髮.
  const std::string hair = chinese.ToTraditional("发");
  EXPECT_EQ(chinese.ToTraditional("头发"), "頭" + hair);
  EXPECT_EQ(chinese.ToTraditional("理发"), "理" + hair);
}

TEST(CurlHttp, SendsInTheBackgroundInOrderAndEndsWithoutWaitingForASilentServer) {
  PollLoop loop;
  std::vector<std::string> came;
  std::promise<void> hasBegun;
  std::promise<void> isDone;
  std::promise<void> hasCome;
  std::promise<void> mayAnswer;
  auto until = mayAnswer.get_future();
  LocalServer local;
  local.pages->Post("/file", [&](const httplib::Request& request, httplib::Response&) {
    came.push_back(request.body);
    if (came.size() == 1) hasBegun.set_value();
    if (came.size() == 3) isDone.set_value();
  });
  local.pages->Post("/silent", [&](const httplib::Request&, httplib::Response&) {
    hasCome.set_value();
    until.wait();
  });
  const auto url = [&](const std::string& path) { return "http://" + local.Host() + path; };
  {
    CurlHttp http(loop);
    http.SendLater({.url = url("/file"), .body = "zeroth"});
    ASSERT_EQ(hasBegun.get_future().wait_for(std::chrono::minutes{1}), std::future_status::ready);
  }
  {
    BackgroundSender sender(std::chrono::minutes{1});
    sender.Add({.url = "http://127.0.0.1:1/"});
    sender.Add({.url = url("/file"), .body = "first"});
    sender.Add({.url = url("/file"), .body = "second"});
  }
  ASSERT_EQ(isDone.get_future().wait_for(std::chrono::seconds{0}), std::future_status::ready)
      << "what is left has some time";
  EXPECT_THAT(came, ::testing::ElementsAre("zeroth", "first", "second"));
  const auto start = loop.Elapsed();
  {
    BackgroundSender sender(std::chrono::milliseconds{10});
    sender.Add({.url = url("/silent"), .body = "lost"});
    ASSERT_EQ(hasCome.get_future().wait_for(std::chrono::minutes{1}), std::future_status::ready);
  }
  EXPECT_LT(loop.Elapsed() - start, std::chrono::seconds{30}) << "the end does not wait for the reply";
  mayAnswer.set_value();
}

TEST(OpenCc, GivesAsManyCharactersAsItGot) {
  const OpenCcConverter chinese;
  std::u16string all;
  for (char16_t character = 0x4E00; character < 0xA000; ++character) all.push_back(character);
  for (const std::string& text : {base::ToUtf8(all), std::string("𠮷😀é\xFF")}) {
    const auto count = [](const std::string& utf8) {
      return std::ranges::count_if(utf8, [](char byte) { return (byte & 0xC0) != 0x80; });
    };
    const auto expected = count(base::ToUtf8(base::ToUtf16(text)));
    EXPECT_EQ(count(chinese.ToSimplified(text)), expected);
    EXPECT_EQ(count(chinese.ToTraditional(text)), expected);
  }
}

}  // namespace

}  // namespace marovane
