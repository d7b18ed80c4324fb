#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

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

  /// Shows a message, looks at it, and answers with a button. True when that agrees.
  bool Ask(const Message& message, const Look& look, MessageButton answer = kOk) {
    bool looked = false;
    user_.OnModal([&](Form& form) {
      auto& box = dynamic_cast<FrmMessage&>(form);
      looked = true;
      look(box);
      user_.Click(box.*answer);
    });
    const bool agrees = Confirm(own_, message);
    EXPECT_TRUE(looked) << message.text;
    return agrees;
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

TEST_F(MessageTest, CaptionsAndTextsFollowTheMessage) {
  using enum Message::Kind;
  const struct {
    const char* shown;
    Message::Kind kind;
    const char *detail, *caption, *text;
  } cases[] = {
      {"一", kPlain, "", "訊息", "\r\n\r\n一"},
      {"一", kError, "", "錯誤", "\r\n\r\n一"},
      {"1234567890123456789012345", kQuestion, "", "詢問", "\r\n\r\n1234567890123456789012345"},
      {"12345678901234567890123456", kUpdate, "", "軟體更新", "\r\n12345678901234567890123456"},
      {"一\r\n\r\n二", kMerge, "", "匯整資料", "\r\n一\r\n\r\n二"},
      {"一", kPlain, "細節", "訊息", "\r\n一\r\n細節"},
      {"一", kPlain, "a detail of some length", "訊息", "\r\n一\r\na detail of some length"},
      {"", kPlain, "", "訊息", "\r\n\r\n"},
      {"", kPlain, "x", "訊息", "\r\n\r\nx"},
  };
  for (const auto& [shown, kind, detail, caption, text] : cases) {
    App().gProgressDetail = detail;
    const auto look = [caption = caption, text = text](FrmMessage& box) {
      EXPECT_EQ(box.lblCaption.Caption(), caption);
      EXPECT_EQ(box.lblMessage.Caption(), text);
      EXPECT_EQ(box.lblMessage.Alignment(), Label::kCenter);
      EXPECT_EQ(box.imgIcon.Picture(), "imgIcons_1");
    };
    EXPECT_TRUE(Ask({"", Message::Icon::kWarning, Message::Buttons::kOk, kind, shown}, look));
    EXPECT_EQ(App().gProgressDetail, "") << "a detail serves once";
  }
}

TEST_F(MessageTest, ButtonsAreInTheMiddle) {
  const struct {
    const Message& message;
    MessageButton answer;
    const char *word, *cancelCaption;
    std::vector<std::pair<std::string, int>> places;  // visible buttons and their left edges
  } cases[] = {
      {Message::kNoSentences, kOk, "OK", "取消", {{"確定", 2500}}},
      {Message::kLeaveProgram, kOk, "OK", "取消", {{"確定", 1900}, {"取消", 3100}}},
      {Message::kLeaveProgram, kCancel, "CANCEL", "取消", {{"確定", 1900}, {"取消", 3100}}},
      {Message::kMergeOldAccount, kCancel, "CANCEL", "放棄", {{"確定", 1900}, {"放棄", 3100}}},
      {Message::kHandInNow, kYes, "YES", "取消", {{"是", 1900}, {"否", 3100}}},
      {Message::kHandInNow, kNo, "NO", "取消", {{"是", 1900}, {"否", 3100}}},
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
    EXPECT_EQ(Ask(row.message, look, row.answer), row.answer == kOk || row.answer == kYes);
    EXPECT_EQ(App().gMsgResult, row.word);
    EXPECT_EQ(seen, row.places) << row.message.text;
  }
}

TEST_F(MessageTest, WindowIsAboveTheMiddleOfTheScreen) {
  windows_.screen = {150, 300, 15000, 9000};
  Ask(Message::kNoSentences, [](FrmMessage& box) {
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
  FrmMessage::MessageBox(own_, Message::kDeleteTopic);
  EXPECT_EQ(machine.loop.Elapsed() - answered, 120ms);
  EXPECT_FALSE(own_.frmMessage.IsLoaded());
  EXPECT_THAT(alphas, ElementsAre(30, 60, 90, 120, 150, 180, 210, 240));
}

TEST_F(MessageTest, QuestionWhoseWindowGoesWithoutAnAnswerIsRefused) {
  const std::pair<const Message&, const char*> cases[] = {
      {Message::kNoSentences, "OK"}, {Message::kLeaveProgram, "CANCEL"}, {Message::kDoubtfulSentence, "NO"}};
  for (const auto& [message, answer] : cases) {
    user_.OnModal([&](Form&) {
      FrmMessage::ProgressMsgBox(own_, Progress::kChecking);
      own_.frmMessage.Unload();
    });
    ShowMessage(own_, message);
    EXPECT_EQ(App().gMsgResult, answer) << message.text;
  }
}

TEST_F(MessageTest, OnlyTheModalBoxAcceptsInput) {
  main_.Show();
  Ask(Message::kNoSentences, [&](FrmMessage& box) {
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
  FakeHall::Lead(own_.hall.frmMain, main_);
  main_.Height = 800;
  for (const auto& [alwaysOnTop, isOpen, makesRoom, topAfter] : cases) {
    App().gAlwaysOnTop = alwaysOnTop;
    App().gOpenMain = isOpen;
    main_.Top = 7000;
    Ask(Message::kNoSentences, [&, makesRoom = makesRoom](FrmMessage& box) {
      EXPECT_EQ(main_.Top(), makesRoom ? box.Top() - 800 : 7000);
    });
    EXPECT_EQ(main_.Top(), topAfter) << alwaysOnTop << isOpen;
  }
}

TEST_F(MessageTest, ProgressBoxStaysUntilItIsClosed) {
  App().gProgressDetail = "http://engine/";
  FrmMessage::ProgressMsgBox(own_, Progress::kChecking);
  EXPECT_EQ(App().gMsgResult, "OK");
  FrmMessage* const box = &Box();
  EXPECT_TRUE(box->Visible() && box->TopMost() && box->picProgress.Visible() && box->IsProgressBox());
  EXPECT_EQ(box->Alpha(), 240);
  EXPECT_EQ(box->lblCaption.Caption(), "請稍候");
  EXPECT_EQ(box->lblMessage.Caption(), "\r\n正在分析您的句子中...請稍候....\r\nhttp://engine/");
  EXPECT_FALSE(box->cmdOK.Visible());

  FrmMessage::ProgressMsgBox(own_, Progress::kFetching);
  EXPECT_EQ(&Box(), box) << "a second text goes into the same window";
  EXPECT_EQ(box->lblMessage.Caption(), "\r\n\r\n正在取得資訊中...請稍候....");

  box->closeForm();
  const auto before = machine.loop.Elapsed();
  machine.loop.WaitUntil([this] { return !own_.frmMessage.IsLoaded(); });
  EXPECT_EQ(machine.loop.Elapsed() - before, 120ms);
}

TEST_F(MessageTest, ProgressBoxThatFadesIsUsedAgain) {
  FrmMessage::ProgressMsgBox(own_, Progress::kChecking);
  Box().closeForm();
  machine.loop.WaitUntil([this] { return Box().Alpha() == 100; });
  FrmMessage::ProgressMsgBox(own_, Progress::kChecking);
  const auto until = machine.loop.Elapsed() + 1s;
  machine.loop.WaitUntil([&] { return machine.loop.Elapsed() >= until; });
  ASSERT_TRUE(own_.frmMessage.IsLoaded());
  EXPECT_EQ(Box().Alpha(), 240);
}

TEST_F(MessageTest, MessageReplacesAProgressBoxAtOnce) {
  FrmMessage::ProgressMsgBox(own_, Progress::kChecking);
  const auto before = machine.loop.Elapsed();
  bool shown = false;
  user_.OnModal([&](Form& form) {
    shown = true;
    EXPECT_FALSE(Box().IsProgressBox());
    EXPECT_THAT(windows_.OpenForms(), ElementsAre(&form));
    EXPECT_EQ(machine.loop.Elapsed(), before);
    user_.Click(Box().cmdOK);
  });
  FrmMessage::MessageBox(own_, Message::kNetworkDown);
  EXPECT_TRUE(shown);
}

TEST_F(MessageTest, ErrorInsideEndsTheRoutineQuietly) {
  Message noIcon = Message::kNetworkDown;
  noIcon.icon = Message::Icon{7};
  FrmMessage::MessageBox(own_, noIcon);
  EXPECT_EQ(App().gMsgResult, "");
}

TEST_F(MessageTest, FlashRunsThroughTheBarAgainAndAgain) {
  FrmMessage::ProgressMsgBox(own_, Progress::kChecking);
  Box().imgProgressFlash.Left = 1700;
  std::vector<int> places;
  const auto watch = Box().imgProgressFlash.Left.Watch([&](const int& left) { places.push_back(left); });
  const auto before = machine.loop.Elapsed();
  machine.loop.WaitUntil([&] { return places.size() == 4; });
  EXPECT_THAT(places, ElementsAre(1900, 2100, -500, -300));
  EXPECT_EQ(machine.loop.Elapsed() - before, 120ms);
}

}  // namespace

}  // namespace marovane
