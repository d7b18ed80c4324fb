#include "core/message.h"

#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

/// Gives windows the sizes that a view would.
class SizingWindows : public HeadlessWindows {
 public:
  void Loaded(Form& form) override {
    HeadlessWindows::Loaded(form);
    auto* const box = dynamic_cast<FrmMessage*>(&form);
    if (box == nullptr) return;
    box->picBG.Width = 6000;
    box->picBG.Height = 3000;
    for (CommandButton* button : {&box->cmdOK, &box->cmdCancel, &box->cmdYes, &box->cmdNo}) {
      button->Width = 1000;
    }
    box->picProgress.Width = 2000;
    box->imgProgressFlash.Width = 500;
  }
};

class MessageTest : public CoreTest {
 protected:
  using Look = std::function<void(FrmMessage&)>;

  /// Shows a message, looks at it, answers with a button, and gives the answer word.
  std::string Show(const std::string& msgId, const std::string& buttons, const Look& look,
                   CommandButton FrmMessage::*answer = &FrmMessage::cmdOK, const std::string& kind = "0") {
    bool looked = false;
    user_.OnModal([&](Form& form) {
      auto& box = dynamic_cast<FrmMessage&>(form);
      looked = true;
      look(box);
      user_.Click(box.*answer);
    });
    const std::string word = FrmMessage::Ask(own_, msgId, 1, buttons, kind);
    EXPECT_TRUE(looked) << msgId;
    return word;
  }

  FrmMessage& Box() { return *own_.frmMessage; }
  AppState& App() { return own_.app; }

  SizingWindows windows_;
  Machine machine_{machine.loop,      windows_,          machine.desktop, machine.http,       machine.files,
                   machine.databases, machine.processes, machine.chinese, machine.environment};
  ScriptedUser user_{machine.loop, windows_};
  Program own_{machine_, {}};
  FakeMain main_{machine_};
};

TEST_F(MessageTest, CaptionsAndTextsFollowTheArguments) {
  const struct {
    const char *msgId, *kind, *detail, *caption, *text;
  } cases[] = {
      {"13", "0", "", "訊息", "\r\n\r\n沒有任何造句記錄"},
      {"13", "1", "", "錯誤", "\r\n\r\n沒有任何造句記錄"},
      {"14003", "2", "", "詢問", "\r\n\r\n此句子有誤！請您修正後按 [Enter] 繼續解析"},        // 25 characters
      {"39", "3", "", "軟體更新", "\r\n等待解析引擎的回傳時間過久, 已中斷呼叫, 請再試一次"},  // 27
      {"4", "4", "", "匯整資料", "\r\n目前已有新版程式! \r\n\r\n您是否要現在進行更新?"},
      {"13", "5", "", "", "\r\n\r\n沒有任何造句記錄"},
      {"13", "", "細節", "", "\r\n沒有任何造句記錄\r\n細節"},
      {"26", "0", "a detail of some length", "訊息", "\r\n請輸入帳號\r\na detail of some length"},
      {"999", "00", "", "", "\r\n\r\n"},
      {"999", "0", "x", "訊息", "\r\n\r\nx"},
  };
  for (const auto& [msgId, kind, detail, caption, text] : cases) {
    App().gProgressDetail = detail;
    const auto look = [&, caption = caption, text = text](FrmMessage& box) {
      EXPECT_EQ(box.lblCaption.Caption(), caption);
      EXPECT_EQ(box.lblMessage.Caption(), text);
      EXPECT_EQ(box.lblMessage.Alignment(), Label::kCenter);
      EXPECT_EQ(box.imgIcon.Picture(), "imgIcons_1");
    };
    EXPECT_EQ(Show(msgId, "OK", look, &FrmMessage::cmdOK, kind), "OK");
    EXPECT_EQ(App().gProgressDetail, "") << "a detail serves once";
  }
}

TEST_F(MessageTest, ButtonsStandInTheMiddle) {
  const struct {
    const char *msgId, *buttons;
    CommandButton FrmMessage::*answer;
    const char *word, *cancelCaption;
    std::vector<std::pair<std::string, int>> places;  // visible buttons and their left edges
  } cases[] = {
      {"13", "OK", &FrmMessage::cmdOK, "OK", "取消", {{"確定", 2500}}},
      {"40", "OK_CANCEL", &FrmMessage::cmdOK, "OK", "取消", {{"確定", 1900}, {"取消", 3100}}},
      {"40", "OK_CANCEL", &FrmMessage::cmdCancel, "CANCEL", "取消", {{"確定", 1900}, {"取消", 3100}}},
      {"49", "OK_CANCEL", &FrmMessage::cmdCancel, "CANCEL", "放棄", {{"確定", 1900}, {"放棄", 3100}}},
      {"14001", "YES_NO", &FrmMessage::cmdYes, "YES", "取消", {{"是", 1900}, {"否", 3100}}},
      {"14001", "YES_NO", &FrmMessage::cmdNo, "NO", "取消", {{"是", 1900}, {"否", 3100}}},
  };
  for (const auto& row : cases) {
    std::vector<std::pair<std::string, int>> seen;
    const auto look = [&](FrmMessage& box) {
      EXPECT_EQ(box.cmdCancel.Caption(), row.cancelCaption);
      EXPECT_FALSE(box.picProgress.Visible());
      for (const CommandButton* button : {&box.cmdOK, &box.cmdCancel, &box.cmdYes, &box.cmdNo}) {
        if (button->Visible) seen.emplace_back(button->Caption(), button->Left());
      }
    };
    EXPECT_EQ(Show(row.msgId, row.buttons, look, row.answer), row.word);
    EXPECT_EQ(seen, row.places) << row.msgId;
  }
}

TEST_F(MessageTest, WindowStandsAboveTheMiddleOfTheScreen) {
  windows_.screen = {150, 300, 15000, 9000};
  Show("13", "OK", [](FrmMessage& box) {
    EXPECT_EQ(box.Left(), 150 + (15000 - 6000) / 2);
    EXPECT_EQ(box.Top(), 300 + (9000 - 3000) / 3 - 500);
  });
}

TEST_F(MessageTest, AnswerIsThereTwelveTicksBeforeTheReturn) {
  auto answered = 0ms;
  std::vector<int> alphas;
  user_.OnModal([&](Form& form) {
    auto& box = dynamic_cast<FrmMessage&>(form);
    EXPECT_EQ(App().gMsgResult, "");
    const auto watch = box.Alpha.Watch([&](const int& alpha) { alphas.push_back(alpha); });
    machine.loop.WaitUntil([&box] { return box.Alpha() == 240; });
    user_.Click(box.cmdNo);
    EXPECT_EQ(App().gMsgResult, "NO");
    EXPECT_TRUE(box.Visible());
    answered = machine.loop.Elapsed();
  });
  App().gMsgResult = "left over";
  FrmMessage::MessageBox(own_, "15", 2, "YES_NO", "2");
  EXPECT_EQ(machine.loop.Elapsed() - answered, 120ms);
  EXPECT_FALSE(own_.frmMessage.IsLoaded());
  EXPECT_THAT(alphas, ElementsAre(30, 60, 90, 120, 150, 180, 210, 240));
}

TEST_F(MessageTest, OnlyTheModalBoxTakesInput) {
  main_.Show();
  Show("13", "OK", [&](FrmMessage& box) {
    EXPECT_THROW(user_.Click(main_.txtInput), std::logic_error);
    box.picBG.MouseDown.Raise(kRightButton);
    box.picBG.MouseDown.Raise(kLeftButton);
    EXPECT_THAT(windows_.drags, ElementsAre(&box));
  });
  EXPECT_TRUE(main_.AcceptsInput());
}

TEST_F(MessageTest, MainWindowMakesRoomWhileItStaysOnTop) {
  const struct {
    const char* alwaysOnTop;
    bool isOpen;
    bool makesRoom;
    int topAfter;
  } cases[] = {
      {"1", true, true, 7000}, {"0", true, false, 7000}, {"0", false, false, 7000}, {"1", false, false, 0}};
  own_.hall.frmMain.LeadsTo([this]() -> MainWindow& { return main_; });
  main_.Height = 800;
  for (const auto& [alwaysOnTop, isOpen, makesRoom, topAfter] : cases) {
    App().gAlwaysOnTop = alwaysOnTop;
    App().gOpenMain = isOpen;
    main_.Top = 7000;
    Show("13", "OK", [&, makesRoom = makesRoom](FrmMessage& box) {
      EXPECT_EQ(main_.Top(), makesRoom ? box.Top() - 800 : 7000);
    });
    EXPECT_EQ(main_.Top(), topAfter) << alwaysOnTop << isOpen;
  }
}

TEST_F(MessageTest, ProgressBoxStaysUntilItIsClosed) {
  App().gProgressDetail = "http://engine/";
  FrmMessage::ProgressMsgBox(own_, "3000", 0, "0");
  EXPECT_EQ(App().gMsgResult, "OK");
  FrmMessage* const box = &Box();
  EXPECT_TRUE(box->Visible() && box->TopMost() && box->picProgress.Visible() && box->IsProgressBox());
  EXPECT_EQ(box->Alpha(), 240);
  EXPECT_EQ(box->lblCaption.Caption(), "請稍候");
  EXPECT_EQ(box->lblMessage.Caption(), "\r\n正在分析您的句子中...請稍候....\r\nhttp://engine/");
  EXPECT_FALSE(box->cmdOK.Visible());

  FrmMessage::ProgressMsgBox(own_, "3007", 0, "1");
  EXPECT_EQ(&Box(), box) << "a second text goes into the same window";
  EXPECT_EQ(box->lblCaption.Caption(), "");
  EXPECT_EQ(box->lblMessage.Caption(), "\r\n\r\n正在取得資訊中...請稍候....");

  box->closeForm();
  const auto before = machine.loop.Elapsed();
  machine.loop.WaitUntil([this] { return !own_.frmMessage.IsLoaded(); });
  EXPECT_EQ(machine.loop.Elapsed() - before, 120ms);
}

TEST_F(MessageTest, ProgressBoxThatFadesIsTakenUpAgain) {
  FrmMessage::ProgressMsgBox(own_, "3000", 0, "0");
  Box().closeForm();
  machine.loop.WaitUntil([this] { return Box().Alpha() == 100; });
  FrmMessage::ProgressMsgBox(own_, "3000", 0, "0");
  const auto until = machine.loop.Elapsed() + 1s;
  machine.loop.WaitUntil([&] { return machine.loop.Elapsed() >= until; });
  ASSERT_TRUE(own_.frmMessage.IsLoaded());
  EXPECT_EQ(Box().Alpha(), 240);
}

TEST_F(MessageTest, MessageReplacesAProgressBoxAtOnce) {
  FrmMessage::ProgressMsgBox(own_, "3000", 0, "0");
  const auto before = machine.loop.Elapsed();
  bool shown = false;
  user_.OnModal([&](Form& form) {
    shown = true;
    EXPECT_FALSE(Box().IsProgressBox());
    EXPECT_THAT(windows_.OpenForms(), ElementsAre(&form));
    EXPECT_EQ(machine.loop.Elapsed(), before);
    user_.Click(Box().cmdOK);
  });
  FrmMessage::MessageBox(own_, "1", 1, "OK", "1");
  EXPECT_TRUE(shown);
}

TEST_F(MessageTest, ErrorInsideEndsTheRoutineQuietly) {
  FrmMessage::MessageBox(own_, "1", 7, "OK", "1");  // there is no such icon
  EXPECT_EQ(App().gMsgResult, "");
}

TEST_F(MessageTest, FlashRunsThroughTheBarAgainAndAgain) {
  FrmMessage::ProgressMsgBox(own_, "3000", 0, "0");
  Box().imgProgressFlash.Left = 1700;
  std::vector<int> places;
  const auto watch = Box().imgProgressFlash.Left.Watch([&](const int& left) { places.push_back(left); });
  const auto before = machine.loop.Elapsed();
  machine.loop.WaitUntil([&] { return places.size() == 4; });
  EXPECT_THAT(places, ElementsAre(1900, 2100, -500, -300));
  EXPECT_EQ(machine.loop.Elapsed() - before, 120ms);
}

}  // namespace
