#include "core/error_report.h"

#include "core/message.h"
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
  void ExpectMessage404(const std::string& detail) {
    machine.user.OnModal([this, detail](Form& form) {
      auto& box = dynamic_cast<FrmMessage&>(form);
      EXPECT_EQ(box.lblCaption.Caption(), "錯誤");
      EXPECT_EQ(box.lblMessage.Caption(), "\r\n出現無法預期錯誤\r\n" + detail);
      machine.user.Click(box.cmdOK);
    });
  }
  std::string Log() { return Content(machine.home / "state" / "marovane" / "error.log").value_or(""); }

  FakeMain main_{machine.machine};
};

TEST_F(ErrorReportTest, WindowsComeBackAndTheTypedTextStays) {
  main_.Left = 300;
  main_.txtInput.KeyDown = [this](int&) {
    main_.Enabled = false;
    main_.Left = -20000;
    FrmMessage::ProgressMsgBox(program, "3000", 0, "0");
    throw RunTimeError("disk full");
  };
  ExpectMessage404("disk full");
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
    ExpectMessage404(detail);
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
  ExpectMessage404("no reply");
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
    ExpectMessage404("x");
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
  ExpectMessage404("a clock");
  machine.user.Click(main_.txtInput);
  EXPECT_EQ(machine.user.Expected(), 0U);
}

}  // namespace
