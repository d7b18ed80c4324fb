#include "checking/main_window.h"

#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kPlaceholder = "請在此輸入您的句子（每次一句）輸入完後請按[Enter]開始";
constexpr Color kAmber = Rgb(255, 204, 0);

class MainWindowTest : public CheckingTest {
 protected:
  void ClickMenu(int index) { machine.user.Click(Main().imgMenu(index)); }
  std::string MenuPicture(int index) { return Main().imgMenu(index).Picture(); }
};

TEST_F(MainWindowTest, PlaceholderGivesWayToTypingForGood) {
  auto& box = Main().txtInput;
  Main().Show();
  EXPECT_EQ(box.Text(), kPlaceholder);
  EXPECT_EQ(box.FontName() + box.SelFontName(), "標楷體標楷體");
  EXPECT_EQ(box.SelColor(), kAmber);
  EXPECT_FALSE(app.gBigTextInput);
  app.gInputFontSize = 15;
  machine.user.Focus(box);
  EXPECT_EQ(box.Text(), "");
  EXPECT_EQ(box.FontName() + box.SelFontName(), "ArialArial");
  EXPECT_EQ(box.FontSize(), 15);
  EXPECT_TRUE(app.gBigTextInput && app.gInputHasFocus);
  machine.user.Focus(Main().txtFocus);
  EXPECT_FALSE(app.gInputHasFocus);
  EXPECT_EQ(box.Text(), "") << "an emptied box keeps the typing style";
  EXPECT_TRUE(app.gBigTextInput);
}

TEST_F(MainWindowTest, EssaySentenceStaysWhenTheStyleChanges) {
  Main().Show();
  app.gEssayMode = true;
  Main().txtInput.Text = std::string("He *go*.");
  Main().SetInputTextStyle(1);
  EXPECT_EQ(Main().txtInput.SelText(), "He *go*.");
}

TEST_F(MainWindowTest, KeyFilterSwallowsSignsThatAreTypedAlone) {
  Main().Show();
  for (TextBox* box : {static_cast<TextBox*>(&Main().txtInput), &Main().oldtxtInput}) {
    machine.user.Type(*box, "a/@!#%^_&*()\"<>b$+=-;:'?,.~{中");
    EXPECT_EQ(box->Text(), "ab$+=-;:'?,.~{中");
  }
  Enter("(pasted)");
  EXPECT_EQ(app.gVerdict, "PASS") << "what is pasted passes";
}

TEST_F(MainWindowTest, EnterOnNothingDoesNothingAndInAnEssayGivesTheTextToTheWalk) {
  for (const char* blank : {"", "   "}) {
    Enter(blank);
    EXPECT_EQ(NeedSync(), "");
  }
  app.gEssayMode = true;
  ExpectMessage(Message::kWrongSentence);
  Enter("   ");
  EXPECT_EQ(app.gVerdict, "");
  Enter("  He goes.  ");
  EXPECT_EQ(app.gVerdict, "He goes.");
  EXPECT_THAT(machine.http.requests, IsEmpty());
  app.gVerdict = "PASS";
  Main().Left = -20000;  // where it is while the walk goes on
  Enter("He goes again.");
  EXPECT_EQ(app.gVerdict, "PASS");
  Main().Left = 0;
  app.gEssayMode = false;
  Enter("He goes.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_EQ(Main().txtInput.Text(), "He goes.") << "the key itself is swallowed";
}

TEST_F(MainWindowTest, ChineseIsTranslatedInPlace) {
  const struct {
    const char *typed, *reply, *query, *result;
  } cases[] = {{"他上學", "OK#He goes to school.", "他上學", "He goes to school."},
               {"Here 这里很冷", "OK#It is cold.", "这里很冷", "Here It is cold."},
               {"他", "ERR_NOTFOUND", "他", nullptr},
               {"他", "", "他", nullptr}};
  for (const auto& [typed, reply, query, result] : cases) {
    machine.http.Route("p_com_translate.asp", reply);
    if (result == nullptr) ExpectMessage(Message::kNoTranslation);
    Enter(typed);
    if (result != nullptr) {
      EXPECT_EQ(Main().txtInput.SelStart(), static_cast<int>(std::string(result).size()));
    }
    EXPECT_EQ(machine.http.Bodies("p_com_translate.asp").back(),
              std::string("key=zorbelquinter&ls=zh-TW&q=") + query);
    EXPECT_EQ(app.gLastInput, query);
    EXPECT_EQ(fakes.frmCollocation.log.back(), std::string("free0 ") + query);
    ExpectIdle(result == nullptr ? typed : result);
  }
  EXPECT_THAT(machine.http.Bodies("p_passWebEngine.asp"), IsEmpty()) << "nothing is checked";
  for (const char* page : {"p_com_translate.asp", "p_all_webengine_get.asp"}) {
    machine.http.RouteToNowhere(page);
    ExpectMessage(Message::kNoTranslation);
    Enter("他");
    ExpectIdle("他");
  }
}

TEST_F(MainWindowTest, SelectionGoesIntoTheWordHelper) {
  Main().Show();
  machine.user.Focus(Main().txtInput);
  const struct {
    const char* text;
    int start, length;
    const char* action;
    std::string result;
    std::vector<std::string> log;
  } cases[] = {
      {"a big dog", 1, 5, "CHECK_SELECT_TEXT", "big", {"free1 big", "key0 big", "key1 big", "tab2 "}},
      {"a big dog", 2, 7, "CHECK_SELECT_TEXT", "big dog", {"free1 big dog", "tab1 "}},
      {"a big dog", 1, 1, "CHECK_SELECT_TEXT", "", {}},
      {"a 大 dog", 0, 3, "CHECK_SELECT_TEXT", "", {}},
      {"a 这 dog", 0, 3, "CHECK_SELECT_TEXT", "", {}},
      {"a 大狗 dog", 0, 1, "CHECK_CHINESE", "大狗", {"free0 大狗"}},
      {"a big dog", 0, 9, "CHECK_CHINESE", "", {}},
      {"a big 狗", 2, 3, "", "狗", {"free1 big", "key0 big", "key1 big", "tab2 ", "free0 狗"}},
      {"a big dog", 2, 3, "OTHER", "", {}},
  };
  for (const auto& [text, start, length, action, result, log] : cases) {
    SCOPED_TRACE(std::string(text) + action);
    fakes.frmCollocation.log.clear();
    Main().txtInput.Text = text;
    Main().txtInput.SelStart = start;
    Main().txtInput.SelLength = length;
    EXPECT_EQ(Main().CheckInputText(action, text), result);
    EXPECT_EQ(fakes.frmCollocation.log, log);
    EXPECT_EQ(Main().txtInput.SelLength(), 0);
  }
}

TEST_F(MainWindowTest, MenuOpensTheWindowsOfItsButtons) {
  Main().Show();
  for (const int button : {1, 6, 4, 2}) ClickMenu(button);
  EXPECT_TRUE(fakes.frmDiary.Visible() && fakes.frmSetup.Visible() && fakes.frmEssayInputEdu.Visible());
  EXPECT_TRUE(fakes.frmCollocation.Visible());
  EXPECT_TRUE(app.gEssayStartRequested);
  app.gEdition = "XQD";
  ClickMenu(4);
  EXPECT_FALSE(app.gEssayStartRequested);
  ClickMenu(7);
  EXPECT_THAT(fakes.frmBrowser.visited, ElementsAre("1 http://site/_htmls/MRV_manual.htm"));

  for (const char* none : {"0", ""}) {
    WriteKeys({{"sentence", none}});
    ExpectMessage(Message::kNothingToReport);
    ClickMenu(5);
    EXPECT_FALSE(fakes.frmFeedback.Visible());
  }
  WriteKeys({{"sentence", "He go."}});
  ClickMenu(5);
  EXPECT_TRUE(fakes.frmFeedback.Visible());
}

TEST_F(MainWindowTest, LastButtonsEmptyTheBoxAndBreakTheEssay) {
  Main().Show();
  machine.user.Type(Main().txtInput, "He go.");
  machine.user.Focus(Main().txtFocus);
  ClickMenu(9);
  EXPECT_EQ(Main().txtInput.Text(), "");
  EXPECT_EQ(machine.windows.Focused(), &Main().txtInput);
  EXPECT_FALSE(Main().imgMenu(10).Visible()) << "until a walk shows it";
  EXPECT_TRUE(Main().imgMenu(9).HandCursor() && !Main().imgMenu(10).HandCursor());
  EXPECT_EQ(Main().imgMenu(10).ToolTipText(), "中斷批改");
  Main().imgMenu_Click(10);
  EXPECT_EQ(app.gVerdict, "#EDIT_BREAK#");
  Main().imgMenu_Click(11);
  Main().imgMenu_Click(-1);
  for (const bool isWeb : {false, true}) {
    machine.user.Click(Main().chkEngineMode);
    EXPECT_EQ(app.gUseWebEngine, isWeb);
  }
}

TEST_F(MainWindowTest, PicturesFollowTheMouse) {
  Main().Show();
  auto& main = Main();
  machine.user.Hover(main.imgMenu(2));
  EXPECT_EQ(MenuPicture(2), "imgBtnOver_2");
  machine.user.Hover(main.imgMenu(3));
  EXPECT_EQ(MenuPicture(2) + MenuPicture(3), "imgBtnOff_2imgBtnOver_3");
  machine.user.Hover(main.picBackground);
  EXPECT_EQ(MenuPicture(3), "imgBtnOff_3");
  main.imgMenu(3).MouseDown.Raise(kLeftButton);
  EXPECT_EQ(MenuPicture(3), "imgBtnOn_3");
  main.imgMenu(3).MouseUp.Raise(kLeftButton);
  EXPECT_EQ(MenuPicture(3), "imgBtnOff_3");
  main.picBackground.MouseDown.Raise(kLeftButton);
  EXPECT_THAT(machine.windows.drags, ElementsAre(&main));
  for (int i = 0; i < 2; ++i) {
    main.picScroll(i).MouseDown.Raise(kLeftButton);
    EXPECT_EQ(main.picScroll(i).Picture(), "imgScrollOn_" + std::to_string(i));
    main.picScroll(i).MouseUp.Raise(kLeftButton);
    EXPECT_EQ(main.picScroll(i).Picture(), "imgScrollOff_" + std::to_string(i));
  }
  EXPECT_THAT(machine.windows.sentKeys, ElementsAre("{UP}", "{DOWN}"));
  EXPECT_EQ(machine.windows.Focused(), &main.txtInput);
}

TEST_F(MainWindowTest, MenuSlidesOutUnderThePointer) {
  auto& main = Main();
  main.imgBackground(0).Width = main.imgBackground(1).Width = 9000;
  main.imgBackground(0).Height = 600;
  main.imgBackground(1).Height = 1500;
  main.Left = 1000;
  main.Top = 2000;
  main.ExtendMenu(false);
  main.Show();
  const auto at = [&](int x, int y) {
    machine.windows.cursor = {x, y};
    machine.loop.Advance(std::chrono::milliseconds{60});
    machine.loop.DoEvents();
    return app.gMenuExtended;
  };
  machine.user.Focus(main.txtFocus);
  EXPECT_FALSE(at(0, 0));
  EXPECT_TRUE(at(1000, 2000));
  EXPECT_EQ(main.Height(), 1500);
  EXPECT_EQ(main.picBackground.Picture(), "imgBackground_1");
  EXPECT_TRUE(at(9999, 3499)) << "the long window counts now";
  machine.user.Hover(main.imgMenu(0));
  EXPECT_FALSE(at(10000, 2000));
  EXPECT_EQ(MenuPicture(0), "imgBtnOff_0");
  machine.user.Focus(main.txtInput);
  EXPECT_TRUE(at(5000, 2100) && at(0, 0)) << "it stays while the user types";
  machine.user.Focus(main.txtFocus);
  EXPECT_FALSE(at(0, 0));
  EXPECT_TRUE(at(5000, 2100));
  machine.windows.ActiveChanged(nullptr);
  EXPECT_TRUE(at(0, 0)) << "and it is frozen while another window is active";
  main.BringToFront();
  app.gEssayMode = true;
  EXPECT_FALSE(at(5000, 2100)) << "in an essay it stays short";
}

TEST_F(MainWindowTest, CampusWindowWithoutALoginGoesAgain) {
  app.gEdition = "XQD";
  Main();
  EXPECT_FALSE(frmMain.IsLoaded() || app.gOpenMain);
}

TEST_F(MainWindowTest, LoadPlacesTheWindowAndFadesItIn) {
  app.gAlwaysOnTop = "1";
  machine.windows.screen = {0, 150, 18000, 12000};
  Main().Show();
  EXPECT_TRUE(app.gOpenMain && Main().TopMost());
  EXPECT_EQ(Main().Top() + Main().Height(), 150 + 12000);
  EXPECT_EQ(Main().Left(), (18000 - Main().Width()) / 2);
  const auto before = machine.loop.Elapsed();
  std::vector<int> alphas;
  const auto watch = Main().Alpha.Watch([&](const int& alpha) { alphas.push_back(alpha); });
  machine.loop.WaitUntil([this] { return !Main().tmrTransparentForm.Enabled(); });
  EXPECT_EQ(alphas.back(), 200);
  EXPECT_EQ(alphas.size(), 20U);
  EXPECT_LE(machine.loop.Elapsed() - before, std::chrono::milliseconds{200});
}

TEST_F(MainWindowTest, LeavingIsAskedForAndFadesToTheEnd) {
  Main().Show();
  machine.loop.WaitUntil([this] { return !Main().tmrTransparentForm.Enabled(); });
  ExpectMessage(Message::kLeaveProgram, kCancel);
  ClickMenu(8);
  EXPECT_TRUE(Main().Enabled());
  EXPECT_FALSE(Main().tmrTransparentForm.Enabled());
  Main().DoCloseAppEffect();
  FrmMessage::ProgressMsgBox(program, Progress::kChecking);
  const auto before = machine.loop.Elapsed();
  EXPECT_THROW(machine.loop.WaitUntil([] { return false; }), ProgramEnd);
  EXPECT_EQ(machine.loop.Elapsed() - before, std::chrono::milliseconds{200});
  EXPECT_THAT(machine.windows.OpenForms(), IsEmpty());
  EXPECT_TRUE(machine.loop.HasEnded());
  EXPECT_FALSE(app.gOpenMain);
}

}  // namespace

}  // namespace marovane
