#include "platform/event_loop.h"

#include <gmock/gmock.h>

#include <array>
#include <stdexcept>
#include <string>
#include <thread>

#include "base/day.h"
#include "base/file_descriptor.h"
#include "platform/headless/poll_loop.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using ::testing::ElementsAre;

void StartTimer(Timer& timer, std::function<void()> onTick) {
  timer.onTick = std::move(onTick);
  timer.Enabled = true;
}

TEST(VirtualLoop, JumpsFromTimerToTimerInTheOrderOfTheirTimes) {
  VirtualLoop loop;
  std::vector<std::string> log;
  const auto note = [&](const char* who) {
    return [&log, &loop, who] { log.push_back(who + std::to_string(loop.Elapsed().count())); };
  };
  Timer slow(loop, 30'000);
  Timer quick(loop, 12'000);
  StartTimer(slow, note("slow"));
  StartTimer(quick, note("quick"));
  const auto before = loop.Now();
  loop.WaitUntil([&log] { return log.size() == 4; });
  EXPECT_THAT(log, ElementsAre("quick12000", "quick24000", "slow30000", "quick36000"));
  EXPECT_EQ(loop.Now() - before, seconds{36});
}

TEST(VirtualLoop, DoesNotMakeUpForMissedTicksAndTakesNoTimeInDoEvents) {
  VirtualLoop loop;
  int ticks = 0;
  Timer timer(loop, 1000);
  StartTimer(timer, [&ticks] { ++ticks; });
  for (int i = 0; i < 100; ++i) loop.DoEvents();
  EXPECT_EQ(ticks, 0);
  loop.Advance(seconds{5});
  loop.DoEvents();
  loop.DoEvents();
  EXPECT_EQ(ticks, 1);
  EXPECT_EQ(loop.Elapsed(), seconds{5});
}

TEST(VirtualLoop, RestartsATimerWhoseIntervalIsSet) {
  VirtualLoop loop;
  int ticks = 0;
  Timer timer(loop, 1000);
  StartTimer(timer, [&ticks] { ++ticks; });
  loop.Advance(milliseconds{900});
  timer.Interval = 1000;
  loop.Advance(milliseconds{900});
  loop.DoEvents();
  EXPECT_EQ(ticks, 0);
  timer.Interval = 0;  // never ticks
  loop.Advance(seconds{10});
  loop.DoEvents();
  EXPECT_EQ(ticks, 0);
}

TEST(VirtualLoop, RefusesToWaitForEver) {
  VirtualLoop loop;
  const auto never = [] { return false; };
  EXPECT_THROW(loop.WaitUntil(never), std::logic_error);
  Timer timer(loop, 60'000);
  timer.Enabled = true;
  EXPECT_THROW(loop.WaitUntil(never), std::logic_error);
  EXPECT_GE(loop.Elapsed(), std::chrono::hours{24});
}

TEST(VirtualLoop, KeepsTheWallClockThatWasSet) {
  VirtualLoop loop;
  loop.Advance(milliseconds{1500});
  const base::LocalTime midnight = std::chrono::local_days{std::chrono::year{2027} / 1 / 1};
  loop.SetNow(midnight - seconds{1});
  EXPECT_EQ(loop.Now(), midnight - seconds{1});
  loop.Advance(seconds{2});
  EXPECT_EQ(loop.Now(), midnight + seconds{1});
}

TEST(EventLoop, WaitsForALimitedTimeOfTheSteadyClock) {
  VirtualLoop loop;
  bool isMet = false;
  Timer timer(loop, 2000);
  StartTimer(timer, [&] { isMet = true; });
  EXPECT_FALSE(loop.WaitUntil([&] { return isMet; }, milliseconds{1500}));
  EXPECT_EQ(loop.Elapsed(), milliseconds{1500});
  EXPECT_TRUE(loop.WaitUntil([&] { return isMet; }, seconds{30}));
  EXPECT_EQ(loop.Elapsed(), seconds{2});
  EXPECT_FALSE(loop.WaitUntil([] { return false; }, milliseconds{0}));
  loop.Wait(seconds{3});
  EXPECT_EQ(loop.Elapsed(), seconds{5});
}

TEST(EventLoop, RunsTheRestOfThePostedTasksWhileOneOfThemWaits) {
  VirtualLoop loop;
  bool hasCome = false;
  std::vector<std::string> log;
  loop.Post([&] {
    loop.WaitUntil([&hasCome] { return hasCome; });
    log.emplace_back("waited");
  });
  loop.Post([&] {
    hasCome = true;
    log.emplace_back("came");
  });
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("came", "waited"));
}

TEST(EventLoop, RunsTheRestOfThePostedTasksAfterOneOfThemFailed) {
  VirtualLoop loop;
  bool hasRun = false;
  loop.Post([] { throw RunTimeError("lost"); });
  loop.Post([&hasRun] { hasRun = true; });
  EXPECT_THROW(loop.DoEvents(), RunTimeError);
  loop.DoEvents();
  EXPECT_TRUE(hasRun);
}

TEST(EventLoop, ServesTimersAndInputBesideTasksThatPostThemselvesAgain) {
  VirtualLoop loop;
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const base::FileDescriptor readEnd(ends[0]);
  base::FileDescriptor writeEnd(ends[1]);
  writeEnd.Close();  // can be "read" from now on

  int rounds = 0;
  bool hasTicked = false;
  bool hasInput = false;
  std::function<void()> again = [&] {
    loop.Advance(milliseconds{1});
    if (++rounds < 1000) loop.Post(again);
  };
  loop.Post(again);
  Timer timer(loop, 10);
  StartTimer(timer, [&hasTicked] { hasTicked = true; });
  int watch = 0;
  watch = loop.WatchReadable(readEnd.Get(), [&] {
    hasInput = true;
    loop.StopWatching(watch);
  });
  loop.WaitUntil([&] { return hasTicked && hasInput; });
  EXPECT_LT(rounds, 1000);
}

TEST(EventLoop, ServesInputWhileATimerIsAlwaysDue) {
  VirtualLoop loop;
  Timer timer(loop, 1);
  int ticks = 0;
  StartTimer(timer, [&] {
    loop.Advance(milliseconds{5});
    if (++ticks == 3) loop.Post([&timer] { timer.Enabled = false; });
  });
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const base::FileDescriptor readEnd(ends[0]);
  base::FileDescriptor(ends[1]).Close();
  bool hasInput = false;
  const int watch = loop.WatchReadable(readEnd.Get(), [&hasInput] { hasInput = true; });
  loop.WaitUntil([&] { return hasInput; });
  loop.StopWatching(watch);
  EXPECT_LT(ticks, 3);
}

TEST(EventLoop, DoesNotFireATimerTwiceWhenAnotherTickWaits) {
  VirtualLoop loop;
  std::vector<std::string> log;
  Timer first(loop, 1000);
  Timer second(loop, 1000);
  // Both are due at once; whichever comes first lets the other one in.
  const auto tick = [&] {
    log.emplace_back(log.empty() ? "waits" : "other");
    if (log.size() == 1) loop.WaitUntil([&log] { return log.size() > 1; });
  };
  StartTimer(first, tick);
  StartTimer(second, tick);
  loop.Advance(seconds{1});
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("waits", "other"));
}

TEST(EventLoop, SurvivesATimerThatIsDestroyedByAnEarlierTick) {
  VirtualLoop loop;
  auto victim = std::make_unique<Timer>(loop, 1000);
  Timer killer(loop, 999);
  bool hasTicked = false;
  StartTimer(*victim, [&hasTicked] { hasTicked = true; });
  StartTimer(killer, [&victim] { victim.reset(); });
  loop.Advance(seconds{2});
  loop.DoEvents();
  EXPECT_EQ(victim, nullptr);
  EXPECT_FALSE(hasTicked);
}

TEST(EventLoop, LetsOnlyPicturesMoveDuringBlockingWork) {
  VirtualLoop loop;
  std::vector<std::string> log;
  const auto note = [&log](const char* what) { return [&log, what] { log.emplace_back(what); }; };
  Timer picture(loop, 10, Timer::Kind::kVisual);
  Timer clock(loop, 10);
  StartTimer(picture, note("picture"));
  StartTimer(clock, note("clock"));
  loop.Post(note("posted"));
  loop.RunBlocking([&] {
    loop.Advance(milliseconds{10});
    note("worked")();
  });
  EXPECT_THAT(log, ElementsAre("picture", "worked"));
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("picture", "worked", "posted", "clock"));
  EXPECT_THROW(loop.RunBlocking([] { throw RunTimeError("no line"); }), RunTimeError);
  EXPECT_FALSE(loop.IsBlocked());
}

TEST(EventLoop, RefusesWorkAndWaitsInsideBlockingWork) {
  const std::function<void(VirtualLoop&)> kFaults[] = {
      [](VirtualLoop& loop) { loop.RunBlocking([] {}); },
      [](VirtualLoop& loop) { loop.WaitUntil([] { return true; }); },
      [](VirtualLoop& loop) { loop.DoEvents(); },
  };
  for (const auto& fault : kFaults) {
    VirtualLoop loop;
    loop.onUnhandledError = [](const std::exception&) { FAIL() << "a message would wait"; };
    Timer picture(loop, 10, Timer::Kind::kVisual);
    StartTimer(picture, [&] { fault(loop); });
    EXPECT_THROW(loop.RunBlocking([&] { loop.Advance(milliseconds{10}); }), std::logic_error);
    EXPECT_NO_THROW(fault(loop)) << "afterwards it is none";
  }
}

TEST(EventLoop, EndsTheHandlerThatFailedAndGoesOn) {
  VirtualLoop loop;
  std::vector<std::string> errors;
  loop.onUnhandledError = [&errors](const std::exception& error) { errors.emplace_back(error.what()); };
  int ticks = 0;
  Timer timer(loop, 100);
  StartTimer(timer, [&ticks] {
    if (++ticks == 1) throw RunTimeError("first tick");
  });
  loop.WaitUntil([&ticks] { return ticks == 2; });
  EXPECT_THAT(errors, ElementsAre("first tick"));
}

TEST(EventLoop, EndsFromWithinNestedWaitsThroughEveryErrorHandler) {
  VirtualLoop loop;
  loop.onUnhandledError = [](const std::exception& error) { FAIL() << error.what(); };
  std::vector<std::string> log;
  Timer timer(loop, 10);
  StartTimer(timer, [&] { loop.End(); });
  loop.Post([&] {
    try {
      loop.WaitUntil([] { return false; });
    } catch (const std::exception&) {
      log.emplace_back("swallowed");
    }
    log.emplace_back("went on");
  });
  loop.Run();
  EXPECT_TRUE(loop.HasEnded());
  EXPECT_THAT(log, ElementsAre());
  EXPECT_THROW(loop.DoEvents(), ProgramEnd);
}

TEST(EventLoop, KeepsWhatIsDisposedUntilTheOutermostHandlerHasReturned) {
  VirtualLoop loop;
  auto object = std::make_shared<int>(7);
  const std::weak_ptr<int> watched = object;
  loop.RunHandler([&] {
    loop.RunHandler([&] { loop.DisposeLater(std::move(object)); });
    EXPECT_FALSE(watched.expired());
    loop.Post([] {});
    loop.DoEvents();
    EXPECT_FALSE(watched.expired());
  });
  EXPECT_TRUE(watched.expired());
}

TEST(PollLoop, IsWokenByAnotherThread) {
  PollLoop loop;
  const auto loopThread = std::this_thread::get_id();
  bool isHere = false;
  std::thread other;
  loop.Post([&] {
    other = std::thread([&] { loop.Post([&] { isHere = std::this_thread::get_id() == loopThread; }); });
  });
  loop.WaitUntil([&isHere] { return isHere; });
  other.join();
  EXPECT_TRUE(isHere);
}

TEST(PollLoop, TicksOnTheRealClock) {
  PollLoop loop;
  int ticks = 0;
  Timer timer(loop, 5);
  const auto start = loop.Elapsed();
  StartTimer(timer, [&ticks] { ++ticks; });
  loop.WaitUntil([&ticks] { return ticks == 3; });
  EXPECT_GE(loop.Elapsed() - start, milliseconds{15});
}

TEST(PollLoop, TellsTheLocalTime) {
  const PollLoop loop;
  const std::time_t before = std::time(nullptr);
  const base::LocalTime now = loop.Now();
  const std::time_t after = std::time(nullptr);
  std::tm civil{};
  const auto day = std::chrono::floor<std::chrono::days>(now);
  const base::Day date{day};
  const std::chrono::hh_mm_ss time{now - day};
  civil.tm_year = static_cast<int>(date.year()) - 1900;
  civil.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  civil.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  civil.tm_hour = static_cast<int>(time.hours().count());
  civil.tm_min = static_cast<int>(time.minutes().count());
  civil.tm_sec = static_cast<int>(time.seconds().count());
  civil.tm_isdst = -1;
  const std::time_t told = std::mktime(&civil);
  EXPECT_LE(before, told);
  EXPECT_LE(told, after);
}

}  // namespace

}  // namespace marovane
