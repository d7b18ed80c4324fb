#include "platform/event_loop.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <thread>

#include "base/day.h"
#include "base/process.h"
#include "platform/headless/poll_loop.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

void StartTimer(Timer& timer, std::function<void()> onTick) {
  timer.onTick = std::move(onTick);
  timer.Enabled = true;
}

/// A loop under the virtual clock, and what has happened in it.
class EventLoopTest : public ::testing::Test {
 protected:
  std::function<void()> Note(std::string what) {
    return [this, what = std::move(what)] { log.push_back(what); };
  }

  VirtualLoop loop;
  std::vector<std::string> log;
};

TEST_F(EventLoopTest, JumpsFromTimerToTimerInTheOrderOfTheirTimes) {
  const auto note = [this](const char* who) {
    return [this, who] { log.push_back(who + std::to_string(loop.Elapsed().count())); };
  };
  Timer slow(loop, 30'000);
  Timer quick(loop, 12'000);
  StartTimer(slow, note("slow"));
  StartTimer(quick, note("quick"));
  const auto before = loop.Now();
  loop.WaitUntil([this] { return log.size() == 4; });
  EXPECT_THAT(log, ElementsAre("quick12000", "quick24000", "slow30000", "quick36000"));
  EXPECT_EQ(loop.Now() - before, 36s);
}

TEST_F(EventLoopTest, DoesNotMakeUpForMissedTicksAndTakesNoTimeInDoEvents) {
  Timer timer(loop, 1000);
  StartTimer(timer, Note("tick"));
  for (int i = 0; i < 100; ++i) loop.DoEvents();
  EXPECT_THAT(log, ElementsAre());
  loop.Advance(5s);
  loop.DoEvents();
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("tick"));
  EXPECT_EQ(loop.Elapsed(), 5s);
}

TEST_F(EventLoopTest, RestartsATimerWhoseIntervalIsSet) {
  Timer timer(loop, 1000);
  StartTimer(timer, Note("tick"));
  loop.Advance(900ms);
  timer.Interval = 1000;
  loop.Advance(900ms);
  loop.DoEvents();
  timer.Interval = 0;  // never ticks
  loop.Advance(10s);
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre());
}

TEST_F(EventLoopTest, RefusesToWaitForEver) {
  const auto never = [] { return false; };
  EXPECT_THROW(loop.WaitUntil(never), std::logic_error);
  Timer timer(loop, 60'000);
  timer.Enabled = true;
  EXPECT_THROW(loop.WaitUntil(never), std::logic_error);
  EXPECT_GE(loop.Elapsed(), 24h);
}

TEST_F(EventLoopTest, WaitsForALimitedTimeOfTheSteadyClock) {
  bool isMet = false;
  Timer timer(loop, 2000);
  StartTimer(timer, [&] { isMet = true; });
  EXPECT_FALSE(loop.WaitUntil([&] { return isMet; }, 1500ms));
  EXPECT_EQ(loop.Elapsed(), 1500ms);
  EXPECT_TRUE(loop.WaitUntil([&] { return isMet; }, 30s));
  EXPECT_EQ(loop.Elapsed(), 2s);
  EXPECT_FALSE(loop.WaitUntil([] { return false; }, 0ms));
  loop.Wait(3s);
  EXPECT_EQ(loop.Elapsed(), 5s);
}

TEST_F(EventLoopTest, RunsTheRestOfThePostedTasksWhileOneOfThemWaitsAndAfterOneHasFailed) {
  loop.Post([this] {
    loop.WaitUntil([this] { return !log.empty(); });
    log.emplace_back("waited");
  });
  loop.Post(Note("came"));
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("came", "waited"));
  loop.Post([] { throw RunTimeError("lost"); });
  loop.Post(Note("after"));
  EXPECT_THROW(loop.DoEvents(), RunTimeError);
  loop.DoEvents();
  EXPECT_EQ(log.back(), "after");
}

TEST_F(EventLoopTest, ServesTimersAndInputBesideTasksThatPostThemselvesAgain) {
  base::Pipe pipe;
  pipe.writeEnd.Close();  // can be "read" from now on
  int rounds = 0;
  bool hasTicked = false;
  bool hasInput = false;
  std::function<void()> again = [&] {
    loop.Advance(1ms);
    if (++rounds < 1000) loop.Post(again);
  };
  loop.Post(again);
  Timer timer(loop, 10);
  StartTimer(timer, [&hasTicked] { hasTicked = true; });
  int watch = 0;
  watch = loop.WatchReadable(pipe.readEnd.Get(), [&] {
    hasInput = true;
    loop.StopWatching(watch);
  });
  loop.WaitUntil([&] { return hasTicked && hasInput; });
  EXPECT_LT(rounds, 1000);
}

TEST_F(EventLoopTest, ServesInputWhileATimerIsAlwaysDue) {
  Timer timer(loop, 1);
  int ticks = 0;
  StartTimer(timer, [&] {
    loop.Advance(5ms);
    if (++ticks == 3) loop.Post([&timer] { timer.Enabled = false; });
  });
  base::Pipe pipe;
  pipe.writeEnd.Close();
  bool hasInput = false;
  const int watch = loop.WatchReadable(pipe.readEnd.Get(), [&hasInput] { hasInput = true; });
  loop.WaitUntil([&] { return hasInput; });
  loop.StopWatching(watch);
  EXPECT_LT(ticks, 3);
}

TEST_F(EventLoopTest, DoesNotFireATimerTwiceWhenAnotherTickWaits) {
  Timer first(loop, 1000);
  Timer second(loop, 1000);
  // Both are due at once; whichever comes first lets the other one in.
  const auto tick = [this] {
    log.emplace_back(log.empty() ? "waits" : "other");
    if (log.size() == 1) loop.WaitUntil([this] { return log.size() > 1; });
  };
  StartTimer(first, tick);
  StartTimer(second, tick);
  loop.Advance(1s);
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("waits", "other"));
}

TEST_F(EventLoopTest, SurvivesATimerThatIsDestroyedByAnEarlierTick) {
  auto victim = std::make_unique<Timer>(loop, 1000);
  Timer killer(loop, 999);
  StartTimer(*victim, Note("victim"));
  StartTimer(killer, [&victim] { victim.reset(); });
  loop.Advance(2s);
  loop.DoEvents();
  EXPECT_EQ(victim, nullptr);
  EXPECT_THAT(log, ElementsAre());
}

TEST_F(EventLoopTest, LetsOnlyPicturesMoveDuringBlockingWork) {
  Timer picture(loop, 10, Timer::Kind::kVisual);
  Timer clock(loop, 10);
  StartTimer(picture, Note("picture"));
  StartTimer(clock, Note("clock"));
  loop.Post(Note("posted"));
  loop.RunBlocking([this] {
    loop.Advance(10ms);
    log.emplace_back("worked");
  });
  EXPECT_THAT(log, ElementsAre("picture", "worked"));
  loop.DoEvents();
  EXPECT_THAT(log, ElementsAre("picture", "worked", "posted", "clock"));
  EXPECT_THROW(loop.RunBlocking([] { throw RunTimeError("no line"); }), RunTimeError);
  EXPECT_FALSE(loop.IsBlocked());
}

TEST_F(EventLoopTest, LearnerBreaksOffTheWorkThatIsGoingOnAndNoOther) {
  loop.BreakOff();
  const auto isStopped = [this](bool breaksOff) {
    bool isAsked = false;
    loop.RunBlocking([&] {
      if (breaksOff) loop.BreakOff();
      isAsked = loop.StopToken().stop_requested();
    });
    return isAsked;
  };
  EXPECT_FALSE(isStopped(false));
  EXPECT_TRUE(isStopped(true));
  EXPECT_FALSE(isStopped(false));
  EXPECT_EQ(loop.TimesBrokenOff(), 2);
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
    EXPECT_THROW(loop.RunBlocking([&] { loop.Advance(10ms); }), std::logic_error);
    EXPECT_NO_THROW(fault(loop)) << "afterwards it is none";
  }
}

TEST_F(EventLoopTest, EndsTheHandlerThatFailedAndGoesOn) {
  loop.onUnhandledError = [this](const std::exception& error) { log.emplace_back(error.what()); };
  int ticks = 0;
  Timer timer(loop, 100);
  StartTimer(timer, [&ticks] {
    if (++ticks == 1) throw RunTimeError("first tick");
  });
  loop.WaitUntil([&ticks] { return ticks == 2; });
  EXPECT_THAT(log, ElementsAre("first tick"));
}

TEST_F(EventLoopTest, EndsFromWithinNestedWaitsThroughEveryErrorHandler) {
  loop.onUnhandledError = [](const std::exception& error) { FAIL() << error.what(); };
  Timer timer(loop, 10);
  StartTimer(timer, [this] { loop.End(); });
  loop.Post([this] {
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

TEST_F(EventLoopTest, KeepsWhatIsDisposedUntilTheOutermostHandlerHasReturned) {
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
  EXPECT_GE(loop.Elapsed() - start, 15ms);
}

TEST(PollLoop, ShowsTheLocalTime) {
  const std::time_t before = std::time(nullptr);
  const base::LocalTime now = PollLoop().Now();
  const std::time_t after = std::time(nullptr);
  // mktime carries seconds over into days and months.
  std::tm civil{};
  civil.tm_year = 70;
  civil.tm_mday = 1;
  const auto day = std::chrono::floor<std::chrono::days>(now);
  civil.tm_mday += static_cast<int>(day.time_since_epoch().count());
  civil.tm_sec = static_cast<int>((now - day).count());
  civil.tm_isdst = -1;
  const std::time_t shown = std::mktime(&civil);
  EXPECT_LE(before, shown);
  EXPECT_LE(shown, after);
}

}  // namespace

}  // namespace marovane
