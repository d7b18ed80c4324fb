#include "core/error_report.h"

#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace {

using ::testing::HasSubstr;

class ErrorReportTest : public CoreTest {
 protected:
  ErrorReportTest() {
    ReportUnhandledErrors(program);
    main_.Width = 9000;
    main_.Height = 1500;
    machine.windows.Loaded(main_);
    main_.Show();
  }
  void ExpectReport(const std::string& detail) {
    ExpectMessage(Message::kUnexpectedError, kOk, "出現無法預期錯誤\r\n" + detail);
  }
  std::string Log() { return Content(machine.home / "state" / "marovane" / "error.log").value_or(""); }

  FakeMain main_{machine.machine};
};

TEST_F(ErrorReportTest, WindowsComeBackAndTheTypedTextStays) {
  main_.Left = 300;
  main_.txtInput.KeyDown = [this](int&) {
    main_.Enabled = false;
    main_.Left = -20000;
    FrmMessage::ProgressMsgBox(program, Progress::kChecking);
    throw RunTimeError("disk full");
  };
  ExpectReport("disk full");
  main_.txtInput.Text = std::string("He go to school.");
  machine.user.Press(main_.txtInput, kKeyEscape);
  EXPECT_EQ(machine.user.Expected(), 0U);
  EXPECT_TRUE(main_.AcceptsInput());
  EXPECT_EQ(main_.Left(), 300) << "where the user had it";
  EXPECT_EQ(main_.txtInput.Text(), "He go to school.");
  EXPECT_FALSE(program.frmMessage.IsLoaded()) << "the progress box does not outlive the error";
  EXPECT_EQ(Log(), "2026-11-05 09:00:00 disk full\n");
}

TEST_F(ErrorReportTest, EachErrorIsALineAndEndsOneEventAlone) {
  int handled = 0;
  main_.txtInput.Click = [&] {
    if (++handled < 3) throw RunTimeError("error " + std::to_string(handled));
  };
  for (const char* detail : {"error 1", "error 2"}) {
    ExpectReport(detail);
    machine.user.Click(main_.txtInput);
  }
  machine.user.Click(main_.txtInput);
  EXPECT_EQ(handled, 3);
  EXPECT_THAT(Log(), HasSubstr(" error 1\n"));
  EXPECT_THAT(Log(), HasSubstr(" error 2\n"));
}

TEST_F(ErrorReportTest, LogThatCannotBeWrittenDoesNotHideTheError) {
  Put(machine.home / "state" / "marovane", "a file where the folder should be");
  main_.txtInput.Click = [] { throw RunTimeError("no reply"); };
  ExpectReport("no reply");
  machine.user.Click(main_.txtInput);
  EXPECT_EQ(machine.user.Expected(), 0U);
}

TEST_F(ErrorReportTest, WindowsThatWerePutAsideBeforeTheEventStayThere) {
  const struct {
    const char* what;
    int left;
    bool enabled;
  } kCases[] = {{"the root window", -10000, true}, {"put aside by an essay", -20000, false}};
  main_.txtInput.Click = [] { throw RunTimeError("x"); };
  main_.Left = 300;
  for (const auto& c : kCases) {
    FakeMain aside(machine.machine);
    machine.windows.Loaded(aside);
    aside.Left = c.left;
    aside.Enabled = c.enabled;
    ExpectReport("x");
    machine.user.Click(main_.txtInput);
    EXPECT_EQ(aside.Left(), c.left) << c.what;
    EXPECT_EQ(aside.Enabled(), c.enabled) << c.what;
    EXPECT_EQ(main_.Left(), 300);
    machine.windows.Unloaded(aside);
  }
}

TEST_F(ErrorReportTest, FailureOfATimerLeavesWhatTheRunningEventHasPutAside) {
  Timer other(machine.loop, 10);
  other.onTick = [&] {
    other.Enabled = false;
    throw RunTimeError("a clock");
  };
  main_.txtInput.Click = [&] {
    main_.Enabled = false;
    main_.Left = -20000;
    other.Enabled = true;
    machine.loop.WaitUntil([&] { return !other.Enabled() && machine.windows.TopModal() == nullptr; });
    EXPECT_FALSE(main_.Enabled());
    EXPECT_EQ(main_.Left(), -20000);
  };
  ExpectReport("a clock");
  machine.user.Click(main_.txtInput);
  EXPECT_EQ(machine.user.Expected(), 0U);
}

}  // namespace
