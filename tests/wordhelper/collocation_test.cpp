#include "wordhelper/collocation.h"

#include "tests/wordhelper/collocation_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

class WordHelperWindow : public CollocationTest {
 protected:
  WordHelperWindow() {
    machine.http.Route("p_passWebEngine_wbank.asp", base::ToCp950("OK_heavy rain >> 大雨<@>rain falls"));
    Helper().Show();
  }

  int ShownTab() {
    int shown = -1;
    for (int i = 0; i < 4; ++i) {
      const bool isOn = Helper().picTabs(i).Picture() == "imgTabOn_" + std::to_string(i);
      EXPECT_EQ(isOn, Helper().picFormTabs(i).Visible());
      if (isOn) shown = i;
    }
    return shown;
  }
  /// The main window comes to the front with this text, of which so much is selected, and leaves the front to
  /// the helper.
  void ComeFromMain(const std::string& text, int length) {
    fakes.frmMain.Show();
    fakes.frmMain.txtInput.Text = text;
    fakes.frmMain.txtInput.SelStart = 0;
    fakes.frmMain.txtInput.SelLength = length;
    fakes.frmMain.checked.clear();
    Helper().Show();
  }
  std::string Asked() {
    const std::string body = machine.http.Bodies("p_passWebEngine_wbank.asp").back();
    return body.substr(body.rfind('=') + 1);
  }
};

TEST_F(WordHelperWindow, OpensOnItsFirstTabWithNothingAsked) {
  EXPECT_TRUE(app.gOpenCollocation);
  EXPECT_EQ(ShownTab(), 0);
  EXPECT_FALSE(ShowsResults());
  EXPECT_TRUE(Helper().optPara1(0).Value() && Helper().optPara2(0).Value() && Helper().optPara3(0).Value());
  EXPECT_THAT(Helper().lblMessage(0).Caption(), StartsWith("輸入中文字串，幫您"));
  for (const int tab : {3, 1, 2, 0}) {
    machine.user.Click(Helper().picTabs(tab));
    EXPECT_EQ(ShownTab(), tab);
  }
}

TEST_F(WordHelperWindow, TakesOverWhatTheMainWindowHasAnew) {
  const struct {
    const char *what, *text;
    int selected;
    const char* lastInput;
    bool isTaken;
    const char *freeword, *lastInputAfter;
  } cases[] = {
      {"nothing written", "  ", 0, "", false, "", ""},
      {"a text", " rain ", 0, "", true, "", ""},
      {"the same text", "rain", 0, "大雨", false, "", "大雨"},
      {"the same text, selected", "rain", 4, "大雨", true, "", ""},
      {"another text after a translation", "heavy rain", 0, "大雨", true, "大雨", "大雨"},
      {"nothing again", "", 0, "大雨", false, "大雨", "大雨"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    app.gLastInput = c.lastInput;
    ComeFromMain(c.text, c.selected);
    EXPECT_EQ(fakes.frmMain.checked.size(), c.isTaken ? 1U : 0U);
    EXPECT_EQ(Helper().txtFreeword(0).Text(), c.freeword);
    EXPECT_EQ(app.gLastInput, c.lastInputAfter);
  }
}

TEST_F(WordHelperWindow, PartnersFollowThePartOfSpeech) {
  TypeOnTab(2, Helper().txtKeyword(0), "rain");
  const struct {
    int word, partner;
    const char* query;
  } cases[] = {
      {0, 2, "rain,CNJ"}, {1, 1, "rain,CVM"}, {0, 0, "rain,CNV"}, {2, 1, "rain,CJM"}, {0, 3, "rain,CNP"}};
  for (const bool byLabel : {false, true}) {
    for (const auto& [word, partner, query] : cases) {
      const auto click = [&](Control& label, Control& option) {
        machine.user.Click(byLabel ? label : option);
      };
      click(Helper().lblPara1(word), Helper().optPara1(word));
      click(Helper().lblPara2(partner), Helper().optPara2(partner));
      for (int i = 0; i < 4; ++i) {
        const bool isPartner = (word == 0) == (i != 1);
        EXPECT_EQ(Helper().optPara2(i).Enabled(), isPartner) << word << i;
        EXPECT_EQ(Helper().lblPara2(i).Enabled(), isPartner) << word << i;
        EXPECT_EQ(Helper().optPara2(i).Value(), i == partner);
      }
      machine.user.Click(Helper().picButtons(0));
      EXPECT_EQ(Asked(), query);
    }
  }
}

TEST_F(WordHelperWindow, AsksForNearSynonyms) {
  TypeOnTab(3, Helper().txtKeyword(1), "happy");
  for (const auto& [option, query] : {std::pair{2, "happy,SJ"}, {0, "happy,SN"}, {1, "happy,SV"}}) {
    machine.user.Click(Helper().lblPara3(option));
    machine.user.Click(Helper().picButtons(1));
    EXPECT_EQ(Asked(), query);
  }
  EXPECT_THAT(fakes.frmBrowser.written, SizeIs(3));
  machine.user.Press(Helper().txtKeyword(1), kKeyEnter);
  EXPECT_THAT(fakes.frmBrowser.written, SizeIs(4)) << "Enter does what the button does";
}

TEST_F(WordHelperWindow, WordBoxAcceptsOnlyLetters) {
  machine.user.Type(Helper().txtKeyword(0), "Ra-i n's2中n");
  EXPECT_EQ(Helper().txtKeyword(0).Text(), "Rainsn");
  machine.user.Press(Helper().txtKeyword(0), kKeyBack);
  EXPECT_EQ(Helper().txtKeyword(0).Text(), "Rains");
  int paste = 22;
  Helper().txtKeyword(1).KeyPress.Raise(paste);
  EXPECT_EQ(paste, 22);
  machine.user.Type(Helper().txtFreeword(1), "it's 2 中");
  EXPECT_EQ(Helper().txtFreeword(1).Text(), "it's 2 中") << "a phrase is not filtered";
}

TEST_F(WordHelperWindow, AWordIsWantedFirst) {
  Helper().txtKeyword(0).Text = "  ";
  for (const int button : {0, 1}) {
    ExpectMessage(Message::kEnterWord);
    machine.user.Click(Helper().picButtons(button));
  }
  EXPECT_THAT(machine.http.Bodies("p_passWebEngine_wbank.asp"), IsEmpty());
  EXPECT_EQ(app.gSuggestMode, "");
}

TEST_F(WordHelperWindow, SearchesOpenOutsideTheProgram) {
  auto& opened = machine.desktop.opened;
  machine.user.Type(Helper().txtFreeword(0), " 下雨天 ");
  machine.user.Click(Helper().picSearchs(0));
  EXPECT_THAT(opened, ElementsAre("http://c/?q=%E4%B8%8B%E9%9B%A8%E5%A4%A9"));
  Helper().txtFreeword(0).Text = "學習 a";
  machine.user.Press(Helper().txtFreeword(0), kKeyEnter);
  EXPECT_EQ(opened.back(), "http://c/?q=%E5%AD%A6%E4%B9%A0 a") << "in simplified characters";
  machine.user.Type(Helper().txtFreeword(1), " heavy rain ");
  machine.user.Click(Helper().picSearchs(1));
  EXPECT_EQ(opened.back(), "http://e/heavy rain/heavy rain");
  machine.user.Choose(Helper().cboWebSource(1), 1);
  machine.user.Click(Helper().picSearchs(1));
  EXPECT_EQ(opened.back(), "http://k/%E4%B8%AD/heavy rain");
  Helper().txtFreeword(1).Text = "";
  machine.user.Click(Helper().picSearchs(1));
  EXPECT_EQ(opened.back(), "http://k/%E4%B8%AD/") << "an empty text is not refused";
  EXPECT_THAT(Acts(), ElementsAre("chn2eng", "chn2eng", "eng2xpl", "eng2xpl", "eng2xpl"));
  EXPECT_EQ(app.gSuggestMode, "eng2xpl");
}

TEST_F(WordHelperWindow, ExamplesAreForThePhraseBeforeItsNote) {
  TypeOnTab(2, Helper().txtKeyword(0), "rain");
  machine.user.Click(Helper().picButtons(0));
  machine.user.Click(Helper().picButtons(2));
  machine.user.Choose(Helper().cboCollect, 1);
  EXPECT_EQ(Helper().lblCollectMessage.Caption(), "查看含 [rain falls] 的例句");
  machine.user.Choose(Helper().cboWebSource(2), 1);
  machine.user.Click(Helper().picButtons(2));
  EXPECT_THAT(machine.desktop.opened,
              ElementsAre("http://e/heavy rain/heavy rain", "http://k/%E4%B8%AD/rain falls"));
  EXPECT_THAT(machine.http.Bodies("p_passWebEngine_wbank.asp"), SizeIs(1)) << "the word bank is not asked";
  EXPECT_THAT(Acts(), ElementsAre("collo", "collo", "collo"));
}

TEST_F(WordHelperWindow, ShowsAQueryAsWordAndOptions) {
  const struct {
    const char *para, *word;
    int first, second;
  } cases[] = {{"run,CVM", "run", 1, 1},   {"rain,CNJ", "rain", 0, 2},
               {"rain,CNP", "rain", 0, 3}, {"happy,CJM", "happy", 2, 1},
               {"sun,CNV", "sun", 0, 0},   {"x,XXX", "x", 0, 0},
               {"y", "y", 0, 0},           {"", "", 0, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.para);
    Helper().ShowQuery(c.para);
    EXPECT_EQ(Helper().txtKeyword(0).Text(), c.word);
    EXPECT_TRUE(Helper().optPara1(c.first).Value() && Helper().optPara2(c.second).Value());
    EXPECT_TRUE(Helper().optPara2(c.second).Enabled());
  }
}

}  // namespace

}  // namespace marovane
