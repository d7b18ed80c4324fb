#include "tests/support/scripted_user.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "platform/form.h"
#include "tests/support/test_machine.h"

namespace marovane {

namespace {

using ::testing::ElementsAre;

class FrmDesk : public Form {
 public:
  explicit FrmDesk(Machine& theMachine) : Form(theMachine, "frmDesk") {}
  TextBox txtInput{*this, "txtInput"};
  CommandButton cmdSend{*this, "cmdSend"};
  CheckBox chkTop{*this, "chkTop"};
  ComboBox cboSource{*this, "cboSource"};
  ControlArray<OptionButton, 2> optSize{*this, "optSize"};
  ControlArray<OptionButton, 2> optMark{*this, "optMark"};
};

class ScriptedUserTest : public ::testing::Test {
 protected:
  ScriptedUserTest() { form_.Show(); }
  TestMachine machine_;
  FrmDesk form_{machine_.machine};
  ScriptedUser& user_ = machine_.user;
  std::vector<std::string> log_;
};

TEST_F(ScriptedUserTest, TypesThroughKeyPressWhichMaySwallowAndChange) {
  form_.txtInput.KeyPress = [this](int& key) {
    log_.push_back(std::to_string(key));
    if (key == '=') key = 0;
    if (key == 'x') key = 'y';
  };
  form_.txtInput.Change = [this] { log_.push_back(form_.txtInput.Text()); };
  user_.Type(form_.txtInput, "a=x字");
  EXPECT_THAT(log_, ElementsAre("97", "a", "61", "120", "ay", std::to_string(0xA672 - 0x10000), "ay字"));
}

TEST_F(ScriptedUserTest, EditsAtTheSelectionAndErasesWholeCharacters) {
  form_.txtInput.Text = std::string("He go to school.");
  form_.txtInput.SelStart = 3;
  form_.txtInput.SelLength = 2;
  user_.Type(form_.txtInput, "goes");
  EXPECT_EQ(form_.txtInput.Text(), "He goes to school.");
  form_.txtInput.SelStart = 0;
  user_.Type(form_.txtInput, "𠮷\n");
  EXPECT_EQ(form_.txtInput.Text(), "𠮷\r\nHe goes to school.");
  for (int i = 0; i < 3; ++i) user_.Press(form_.txtInput, kKeyBack);
  EXPECT_EQ(form_.txtInput.Text(), "He goes to school.");
}

TEST_F(ScriptedUserTest, PressesAKeyThatKeyDownMaySwallow) {
  form_.txtInput.KeyPress = [this](int& key) {
    log_.push_back("press " + std::to_string(key));
    key = 0;
  };
  user_.Press(form_.txtInput, kKeyEnter);
  EXPECT_THAT(log_, ElementsAre("press 13"));
  form_.txtInput.KeyDown = [](int& key) { key = 0; };
  user_.Press(form_.txtInput, kKeyEnter);
  EXPECT_THAT(log_, ElementsAre("press 13"));
  EXPECT_EQ(form_.txtInput.Text(), "");
}

TEST_F(ScriptedUserTest, ClicksInTheOrderOfARealMouse) {
  const auto note = [this](const char* what) { return [this, what](auto...) { log_.emplace_back(what); }; };
  form_.chkTop.MouseMove = note("move");
  form_.chkTop.GotFocus = note("focus");
  form_.chkTop.MouseDown = note("down");
  form_.chkTop.MouseUp = note("up");
  form_.chkTop.Click = [this] { log_.emplace_back(form_.chkTop.Value() ? "click on" : "click off"); };
  user_.Click(form_.chkTop);
  EXPECT_THAT(log_, ElementsAre("move", "focus", "down", "up", "click on"));
}

TEST_F(ScriptedUserTest, PicksOneOptionOfItsGroupAndAnItemOfAList) {
  form_.optSize(0).Value = true;
  form_.optMark(0).Value = true;
  user_.Click(form_.optSize(1));
  EXPECT_FALSE(form_.optSize(0).Value());
  EXPECT_TRUE(form_.optSize(1).Value());
  EXPECT_TRUE(form_.optMark(0).Value());
  form_.cboSource.Items = std::vector<std::string>{"news", "books"};
  user_.Choose(form_.cboSource, 1);
  EXPECT_EQ(form_.cboSource.Text(), "books");
  EXPECT_THROW(user_.Choose(form_.cboSource, 2), std::logic_error);
}

TEST_F(ScriptedUserTest, RefusesWhatAPersonCouldNotDo) {
  FrmDesk modal(machine_.machine);
  const struct {
    const char* name;
    std::function<void()> raise, remove;
  } obstacles[] = {
      {"disabled control", [&] { form_.cmdSend.Enabled = false; }, [&] { form_.cmdSend.Enabled = true; }},
      {"hidden control", [&] { form_.cmdSend.Visible = false; }, [&] { form_.cmdSend.Visible = true; }},
      {"disabled form", [&] { form_.Enabled = false; }, [&] { form_.Enabled = true; }},
      {"hidden form", [&] { form_.Hide(); }, [&] { form_.Show(); }},
      {"modal form in front", [&] { machine_.windows.Shown(modal, true); }, [&] { modal.Hide(); }},
  };
  int clicks = 0;
  form_.cmdSend.Click = [&clicks] { ++clicks; };
  for (const auto& [name, raise, remove] : obstacles) {
    raise();
    EXPECT_THROW(user_.Click(form_.cmdSend), std::logic_error) << name;
    EXPECT_THROW(user_.Hover(form_.cmdSend), std::logic_error) << name;
    remove();
  }
  EXPECT_EQ(clicks, 0);
  user_.Click(form_.cmdSend);
  EXPECT_EQ(clicks, 1);
}

TEST_F(ScriptedUserTest, StopsTypingWhereTheBoxStopsListening) {
  form_.txtInput.Change = [this] {
    if (form_.txtInput.Text() == "He") form_.Enabled = false;
  };
  EXPECT_THROW(user_.Type(form_.txtInput, "Here"), std::logic_error);
  EXPECT_EQ(form_.txtInput.Text(), "He");
  form_.Enabled = true;
  form_.txtInput.Change = [this] { form_.cmdSend.SetFocus(); };
  EXPECT_THROW(user_.Type(form_.txtInput, "ab"), std::logic_error);
}

}  // namespace

}  // namespace marovane
