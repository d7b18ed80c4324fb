#include "core/error_report.h"

#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

class ErrorReportTest : public CoreTest {
 protected:
  ErrorReportTest() {
    ReportUnhandledErrors(program);
    failing.onTick = [this] {
      failing.Enabled = false;
      throw RunTimeError("a clock");
    };
    fakes.frmMain.Width = 9000;
    fakes.frmMain.Height = 1500;
    machine.windows.Loaded(fakes.frmMain);
    fakes.frmMain.Show();
  }
  void TearDown() override { EXPECT_EQ(machine.user.Expected(), 0U); }
  void ExpectReport(const std::string& detail) {
    ExpectMessage(Message::kUnexpectedError, kOk, "出現無法預期錯誤\r\n" + detail);
  }
  /// An event that fails, and its report.
  void Fail() {
    frmMain.txtInput.Click = [] { throw RunTimeError("no reply"); };
    ExpectReport("no reply");
    machine.user.Click(frmMain.txtInput);
  }
  std::string Log() { return Content(machine.home / "state" / "marovane" / "error.log").value_or(""); }

  FakeMain& frmMain = fakes.frmMain;
  /// An event of its own, which fails.
  Timer failing{machine.loop, 10};
};

TEST_F(ErrorReportTest, WindowsComeBackAndTheTypedTextStays) {
  frmMain.Left = 300;
  frmMain.txtInput.KeyDown = [this](int&) {
    frmMain.Enabled = false;
    frmMain.Left = -20000;
    FrmMessage::ProgressMsgBox(program, Progress::kChecking);
    throw RunTimeError("disk full");
  };
  ExpectReport("disk full");
  frmMain.txtInput.Text = std::string("He go to school.");
  machine.user.Press(frmMain.txtInput, kKeyEscape);
  EXPECT_TRUE(frmMain.AcceptsInput());
  EXPECT_EQ(frmMain.Left(), 300) << "where the user had it";
  EXPECT_EQ(frmMain.txtInput.Text(), "He go to school.");
  EXPECT_FALSE(program.frmMessage.IsLoaded()) << "the progress box does not outlive the error";
  EXPECT_EQ(Log(), "2026-11-05 09:00:00 disk full\n");
}

TEST_F(ErrorReportTest, EachErrorIsALineAndEndsOneEventAlone) {
  int handled = 0;
  frmMain.txtInput.Click = [&] {
    if (++handled < 3) throw RunTimeError("error " + std::to_string(handled));
  };
  for (const char* detail : {"error 1", "error 2"}) {
    ExpectReport(detail);
    machine.user.Click(frmMain.txtInput);
  }
  machine.user.Click(frmMain.txtInput);
  EXPECT_EQ(handled, 3);
  EXPECT_EQ(Log(), "2026-11-05 09:00:00 error 1\n2026-11-05 09:00:00 error 2\n");
}

TEST_F(ErrorReportTest, LogThatCannotBeWrittenDoesNotHideTheError) {
  Put(machine.home / "state" / "marovane", "a file where the folder should be");
  Fail();
}

TEST_F(ErrorReportTest, WindowsThatWerePutAsideBeforeTheEventStayThere) {
  const struct {
    const char* what;
    int left;
    bool enabled;
  } kCases[] = {{"the root window", -10000, true}, {"put aside by an essay", -20000, false}};
  frmMain.Left = 300;
  for (const auto& c : kCases) {
    FakeMain aside(machine.machine);
    machine.windows.Loaded(aside);
    aside.Left = c.left;
    aside.Enabled = c.enabled;
    Fail();
    EXPECT_EQ(aside.Left(), c.left) << c.what;
    EXPECT_EQ(aside.Enabled(), c.enabled) << c.what;
    EXPECT_EQ(frmMain.Left(), 300);
    machine.windows.Unloaded(aside);
  }
}

TEST_F(ErrorReportTest, OpenQuestionKeepsItsOwnAnswer) {
  FrmMessage* question = nullptr;
  Timer learner(machine.loop, 500);
  learner.onTick = [&] {
    learner.Enabled = false;
    machine.user.Click(question->cmdCancel);
  };
  machine.user.OnModal([&](Form& form) {
    question = dynamic_cast<FrmMessage*>(&form);
    failing.Enabled = true;
    learner.Enabled = true;
  });
  ExpectReport("a clock");
  EXPECT_FALSE(Confirm(program, Message::kLeaveProgram));
  EXPECT_EQ(app.gMsgResult, "CANCEL");
}

TEST_F(ErrorReportTest, IsNoAnswerToTheQuestionOfAnotherWindow) {
  for (const char* answer : {"", "CANCEL"}) {
    app.gMsgResult = answer;
    Fail();
    EXPECT_EQ(app.gMsgResult, answer);
  }
}

TEST_F(ErrorReportTest, FailureOfATimerLeavesWhatTheRunningEventHasPutAside) {
  frmMain.txtInput.Click = [&] {
    frmMain.Enabled = false;
    frmMain.Left = -20000;
    failing.Enabled = true;
    machine.loop.WaitUntil([&] { return !failing.Enabled() && machine.windows.TopModal() == nullptr; });
    EXPECT_FALSE(frmMain.Enabled());
    EXPECT_EQ(frmMain.Left(), -20000);
  };
  ExpectReport("a clock");
  machine.user.Click(frmMain.txtInput);
}

}  // namespace

}  // namespace marovane
