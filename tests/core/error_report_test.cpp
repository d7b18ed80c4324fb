#include "core/error_report.h"

#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using ::testing::HasSubstr;

class ErrorReportTest : public CoreTest {
 protected:
  ErrorReportTest() {
    ReportUnhandledErrors(program);
    fakes.frmMain.Width = 9000;
    fakes.frmMain.Height = 1500;
    machine.windows.Loaded(fakes.frmMain);
    fakes.frmMain.Show();
  }
  void ExpectReport(const std::string& detail) {
    ExpectMessage(Message::kUnexpectedError, kOk, "出現無法預期錯誤\r\n" + detail);
  }
  std::string Log() { return Content(machine.home / "state" / "marovane" / "error.log").value_or(""); }
};

TEST_F(ErrorReportTest, WindowsComeBackAndTheTypedTextStays) {
  fakes.frmMain.Left = 300;
  fakes.frmMain.txtInput.KeyDown = [this](int&) {
    fakes.frmMain.Enabled = false;
    fakes.frmMain.Left = -20000;
    FrmMessage::ProgressMsgBox(program, Progress::kChecking);
    throw RunTimeError("disk full");
  };
  ExpectReport("disk full");
  fakes.frmMain.txtInput.Text = std::string("He go to school.");
  machine.user.Press(fakes.frmMain.txtInput, kKeyEscape);
  EXPECT_EQ(machine.user.Expected(), 0U);
  EXPECT_TRUE(fakes.frmMain.AcceptsInput());
  EXPECT_EQ(fakes.frmMain.Left(), 300) << "where the user had it";
  EXPECT_EQ(fakes.frmMain.txtInput.Text(), "He go to school.");
  EXPECT_FALSE(program.frmMessage.IsLoaded()) << "the progress box does not outlive the error";
  EXPECT_EQ(Log(), "2026-11-05 09:00:00 disk full\n");
}

TEST_F(ErrorReportTest, EachErrorIsALineAndEndsOneEventAlone) {
  int handled = 0;
  fakes.frmMain.txtInput.Click = [&] {
    if (++handled < 3) throw RunTimeError("error " + std::to_string(handled));
  };
  for (const char* detail : {"error 1", "error 2"}) {
    ExpectReport(detail);
    machine.user.Click(fakes.frmMain.txtInput);
  }
  machine.user.Click(fakes.frmMain.txtInput);
  EXPECT_EQ(handled, 3);
  EXPECT_THAT(Log(), HasSubstr(" error 1\n"));
  EXPECT_THAT(Log(), HasSubstr(" error 2\n"));
}

TEST_F(ErrorReportTest, LogThatCannotBeWrittenDoesNotHideTheError) {
  Put(machine.home / "state" / "marovane", "a file where the folder should be");
  fakes.frmMain.txtInput.Click = [] { throw RunTimeError("no reply"); };
  ExpectReport("no reply");
  machine.user.Click(fakes.frmMain.txtInput);
  EXPECT_EQ(machine.user.Expected(), 0U);
}

TEST_F(ErrorReportTest, WindowsThatWerePutAsideBeforeTheEventStayThere) {
  const struct {
    const char* what;
    int left;
    bool enabled;
  } kCases[] = {{"the root window", -10000, true}, {"put aside by an essay", -20000, false}};
  fakes.frmMain.txtInput.Click = [] { throw RunTimeError("x"); };
  fakes.frmMain.Left = 300;
  for (const auto& c : kCases) {
    FakeMain aside(machine.machine);
    machine.windows.Loaded(aside);
    aside.Left = c.left;
    aside.Enabled = c.enabled;
    ExpectReport("x");
    machine.user.Click(fakes.frmMain.txtInput);
    EXPECT_EQ(aside.Left(), c.left) << c.what;
    EXPECT_EQ(aside.Enabled(), c.enabled) << c.what;
    EXPECT_EQ(fakes.frmMain.Left(), 300);
    machine.windows.Unloaded(aside);
  }
}

TEST_F(ErrorReportTest, OpenQuestionKeepsItsOwnAnswer) {
  Timer other(machine.loop, 10);
  other.onTick = [&] {
    other.Enabled = false;
    throw RunTimeError("a clock");
  };
  FrmMessage* question = nullptr;
  Timer learner(machine.loop, 500);
  learner.onTick = [&] {
    learner.Enabled = false;
    machine.user.Click(question->cmdCancel);
  };
  machine.user.OnModal([&](Form& form) {
    question = dynamic_cast<FrmMessage*>(&form);
    other.Enabled = true;
    learner.Enabled = true;
  });
  ExpectReport("a clock");
  EXPECT_FALSE(Confirm(program, Message::kLeaveProgram));
  EXPECT_EQ(app.gMsgResult, "CANCEL");
  EXPECT_EQ(machine.user.Expected(), 0U);
}

TEST_F(ErrorReportTest, IsNoAnswerToTheQuestionOfAnotherWindow) {
  fakes.frmMain.txtInput.Click = [] { throw RunTimeError("x"); };
  for (const char* answer : {"", "CANCEL"}) {
    app.gMsgResult = answer;
    ExpectReport("x");
    machine.user.Click(fakes.frmMain.txtInput);
    EXPECT_EQ(app.gMsgResult, answer);
  }
}

TEST_F(ErrorReportTest, FailureOfATimerLeavesWhatTheRunningEventHasPutAside) {
  Timer other(machine.loop, 10);
  other.onTick = [&] {
    other.Enabled = false;
    throw RunTimeError("a clock");
  };
  fakes.frmMain.txtInput.Click = [&] {
    fakes.frmMain.Enabled = false;
    fakes.frmMain.Left = -20000;
    other.Enabled = true;
    machine.loop.WaitUntil([&] { return !other.Enabled() && machine.windows.TopModal() == nullptr; });
    EXPECT_FALSE(fakes.frmMain.Enabled());
    EXPECT_EQ(fakes.frmMain.Left(), -20000);
  };
  ExpectReport("a clock");
  machine.user.Click(fakes.frmMain.txtInput);
  EXPECT_EQ(machine.user.Expected(), 0U);
}

}  // namespace

}  // namespace marovane
