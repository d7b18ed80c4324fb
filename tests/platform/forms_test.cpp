#include <gmock/gmock.h>

#include <string>

#include "platform/controls.h"
#include "platform/property.h"
#include "platform/run_time_error.h"
#include "platform/window.h"
#include "tests/support/test_machine.h"

namespace marovane {

namespace {

using ::testing::ElementsAre;

std::vector<std::string>& Log() {
  static std::vector<std::string> log;
  return log;
}

class FrmNote : public Form {
 public:
  explicit FrmNote(Machine& theMachine) : Form(theMachine, "frmNote") {
    txtNote.LostFocus = [] { Log().emplace_back("lost"); };
    txtNote.GotFocus = [] { Log().emplace_back("got"); };
  }
  void Form_Load() override {
    Log().emplace_back("load");
    if (unloadsItself) Unload();
    if (fails) throw RunTimeError("no page");
  }
  void Form_Activate() override { Log().emplace_back("activate"); }
  void Form_Deactivate() override { Log().emplace_back("deactivate"); }
  void Form_Unload() override { Log().emplace_back("unload"); }

  TextBox txtNote{*this, "txtNote"};
  CommandButton cmdClose{*this, "cmdClose"};
  std::string text = "alive";
  static inline bool unloadsItself = false;
  static inline bool fails = false;
};

class FormsTest : public ::testing::Test {
 protected:
  FormsTest() {
    Log().clear();
    FrmNote::unloadsItself = FrmNote::fails = false;
  }
  TestMachine machine_;
  Window<FrmNote> frmNote{machine_.machine}, frmOther{machine_.machine};
};

TEST_F(FormsTest, LoadsAtTheFirstReferenceAndAgainAfterAnUnload) {
  EXPECT_FALSE(frmNote.IsLoaded());
  frmNote->text = "changed";
  EXPECT_THAT(Log(), ElementsAre("load"));
  frmNote->Unload();
  EXPECT_EQ(frmNote->text, "alive");
  EXPECT_THAT(Log(), ElementsAre("load", "unload", "load"));
  EXPECT_EQ(machine_.windows.OpenForms().size(), 1U);
}

TEST_F(FormsTest, LetsAHandlerUnloadItsOwnWindowAndGoOn) {
  frmNote->Show();
  FrmNote* const form = &*frmNote;
  std::string after;
  form->cmdClose.Click = [form, &after] {
    form->Unload();
    after = form->text;
  };
  machine_.user.Click(form->cmdClose);
  EXPECT_EQ(after, "alive");
  EXPECT_FALSE(frmNote.IsLoaded());
  EXPECT_TRUE(machine_.windows.OpenForms().empty());
}

TEST_F(FormsTest, ComesThroughALoadThatUnloadsOrFails) {
  FrmNote::unloadsItself = true;
  EXPECT_EQ(frmNote->text, "alive");
  frmNote->Show();  // shows a window that is gone already
  EXPECT_FALSE(frmNote.IsLoaded());
  FrmNote::unloadsItself = false;
  FrmNote::fails = true;
  EXPECT_THROW(frmNote->Show(), RunTimeError);
  EXPECT_FALSE(frmNote.IsLoaded());
  FrmNote::fails = false;
  frmNote->Show();
  EXPECT_TRUE(frmNote->Visible());
}

TEST_F(FormsTest, WhatIsDestroyedWithTheFocusHearsNothing) {
  {
    FrmNote loose(machine_.machine);
    machine_.windows.Shown(loose, true);
    loose.txtNote.SetFocus();
    Log().clear();
  }
  EXPECT_EQ(machine_.windows.Focused(), nullptr);
  EXPECT_THAT(Log(), ElementsAre());
  frmNote->Show();
  EXPECT_TRUE(frmNote->AcceptsInput());
  EXPECT_THAT(Log(), ElementsAre("load", "activate"));
  {
    TextBox passing(*frmNote, "txtPassing");
    passing.LostFocus = [] { Log().emplace_back("the dead hear"); };
    passing.SetFocus();
    Log().clear();
  }
  EXPECT_EQ(machine_.windows.Focused(), nullptr);
  EXPECT_THAT(Log(), ElementsAre());
}

TEST_F(FormsTest, ModalFormKeepsOthersOutUntilItGoes) {
  const std::function<void(Form&)> ends[] = {[](Form& form) { form.Hide(); },
                                             [](Form& form) { form.Unload(); },
                                             [](Form& form) { form.Visible = false; }};
  frmNote->Show();
  for (const auto& end : ends) {
    bool wasShut = false;
    machine_.user.OnModal([&](Form& form) {
      wasShut = !frmNote->AcceptsInput() && form.AcceptsInput();
      end(form);
    });
    frmOther->ShowModal();
    EXPECT_TRUE(wasShut);
    EXPECT_TRUE(frmNote->AcceptsInput());
    EXPECT_EQ(machine_.windows.TopModal(), nullptr);
  }
}

TEST_F(FormsTest, ReportsTheFocusAndTheActiveFormInOrder) {
  frmNote->Show();
  frmOther->Show();
  Log().clear();
  frmNote->txtNote.SetFocus();
  frmNote->txtNote.SetFocus();
  frmOther->cmdClose.SetFocus();
  frmOther->Hide();
  EXPECT_THAT(Log(),
              ElementsAre("deactivate", "activate", "got", "deactivate", "activate", "lost", "deactivate"));
}

TEST_F(FormsTest, RefusesAnIndexOutsideAControlArray) {
  FrmNote form(machine_.machine);
  ControlArray<PictureBox, 3> picButtons(form, "picButtons");
  EXPECT_THROW(picButtons(3), RunTimeError);
  EXPECT_THROW(picButtons(-1), RunTimeError);
  EXPECT_EQ(form.Find("picButtons_2"), &picButtons(2));
}

TEST(Property, NotifiesEachWatcherOfEachAssignmentAlsoOfAnEqualOneAndOfACopy) {
  Property<int> width{3};
  Property<int> other{4};
  std::vector<int> heard;
  const auto first = width.Watch([&heard](int value) { heard.push_back(value); });
  auto second = width.Watch([&heard](int value) { heard.push_back(-value); });
  width = 3;
  second.reset();
  width = other;
  other = width;
  other = 5;
  EXPECT_THAT(heard, ElementsAre(3, -3, 4)) << "a copy has watchers of its own";
  EXPECT_EQ(width(), 4);
}

TEST(Property, LetsAWatcherLeaveJoinAndAssignWhileItIsNotified) {
  Property<std::string> caption;
  std::vector<std::string> heard;
  Subscription leaving;
  Subscription joined;
  leaving = caption.Watch([&](const std::string&) {
    leaving.reset();
    joined = caption.Watch([&heard](const std::string& value) { heard.push_back("joined " + value); });
  });
  const auto repairing = caption.Watch([&](const std::string& value) {
    heard.push_back(value);
    if (value == "wrong") caption = std::string("right");
  });
  caption = std::string("wrong");
  EXPECT_EQ(caption(), "right");
  EXPECT_THAT(heard, ElementsAre("wrong", "right", "joined right"));
}

}  // namespace

}  // namespace marovane
