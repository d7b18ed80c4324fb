#include "wordhelper/browser.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "tests/support/fake_hall.h"
#include "tests/support/test_machine.h"

namespace marovane {

namespace {

using namespace ::testing;

/// Keeps what a pane was asked for.
class RecordingRenderer : public WebRenderer {
 public:
  explicit RecordingRenderer(WebBrowser& pane) { pane.SetRenderer(this); }
  void Navigate(const std::string& url) override { log.push_back("go " + url); }
  void Write(const std::string& html) override { log.push_back("write " + html); }
  void SubmitForm(int index) override { log.push_back("submit " + std::to_string(index)); }
  void SetChecked(const std::map<std::string, bool>& /*marks*/) override {}
  void GoBack() override { log.emplace_back("back"); }
  void GoForward() override { log.emplace_back("forward"); }
  std::vector<std::string> Take() { return std::exchange(log, {}); }
  std::vector<std::string> log;
};

class BrowserTest : public ::testing::Test {
 protected:
  BrowserTest() {
    program.app.gServerUrlRoot = "http://server/";
    program.app.gWebEngineRoot = "http://engine/";
    program.app.gAccountNo = "4711";
    FakeHall::Lead(program.hall.frmEssay, essay);
    browser.Form_Load();
    main.Take();
    other.Take();
  }
  bool IsOnPane(int mode) {
    const bool isFirst = mode == 1;
    return browser.webMain.Visible() == isFirst && browser.webOther.Visible() != isFirst &&
           browser.picBtns(0).Visible() == isFirst && browser.picBtns(2).Visible() == isFirst &&
           browser.picTabs(0).Picture() == (isFirst ? "imgTabOn_0" : "imgTabOff_0") &&
           browser.picTabs(1).Picture() == (isFirst ? "imgTabOff_1" : "imgTabOn_1");
  }

  TestMachine machine;
  Program program{machine.machine, {}};
  FakeEssay essay{machine.machine};
  FrmBrowser browser{program};
  RecordingRenderer main{browser.webMain}, other{browser.webOther};
};

TEST_F(BrowserTest, ShowsAddressesAndPagesInThePaneAskedFor) {
  browser.GoNavigate("http://a/", 2);
  EXPECT_TRUE(IsOnPane(2) && browser.Visible());
  EXPECT_THAT(other.Take(), ElementsAre("go http://a/"));
  browser.Hide();
  browser.GoWritePage(base::Literal("<p>1"), 1);
  EXPECT_TRUE(IsOnPane(1) && browser.Visible());
  EXPECT_THAT(main.Take(), ElementsAre("go about:blank", "write <p>1"));
  browser.GoPostPage(base::Literal("<form>"), 2);
  EXPECT_TRUE(IsOnPane(2));
  EXPECT_THAT(other.Take(), ElementsAre("go about:blank", "write <form>", "submit 0"));
  browser.Hide();
  browser.GoNavigate("http://b/", 3);
  EXPECT_TRUE(IsOnPane(2) && browser.Visible()) << "another mode only shows the window";
  EXPECT_TRUE(main.Take().empty() && other.Take().empty());
}

TEST_F(BrowserTest, ButtonsWorkTheHistoryAndOpenOutside) {
  browser.GoNavigate("http://a/", 1);
  main.Take();
  machine.user.Click(browser.picBtns(0));
  EXPECT_EQ(browser.picBtns(0).Picture(), "imgBtnOn_0");
  machine.user.Click(browser.picBtns(1));
  EXPECT_THAT(main.Take(), ElementsAre("back", "forward"));
  browser.GoNavigate("http://b/", 1);
  EXPECT_EQ(browser.picBtns(0).Picture(), "imgBtnOff_0");
  machine.user.Click(browser.picBtns(2));
  EXPECT_THAT(machine.desktop.opened, ElementsAre("http://b/"));
  machine.user.Click(browser.picTabs(1));
  EXPECT_TRUE(IsOnPane(2));
}

TEST_F(BrowserTest, LinksCarryCommandsInBothPanes) {
  EXPECT_FALSE(browser.webMain.FollowLink("cmd:show:2026110500001"));
  EXPECT_FALSE(browser.webOther.FollowLink("cmd:show:2"));
  EXPECT_THAT(essay.shown, ElementsAre("2026110500001", "2"));
  EXPECT_FALSE(browser.webOther.FollowLink("cmd:work:w7"));
  EXPECT_FALSE(browser.webMain.FollowLink("cmd:teaw:w8"));
  for (const char* unknown : {"cmd:", "cmd:tab:1"}) EXPECT_FALSE(browser.webMain.FollowLink(unknown));
  EXPECT_TRUE(browser.webMain.FollowLink("http://a/"));
  EXPECT_TRUE(browser.webMain.FollowLink("rem:errcode:A1"));
  EXPECT_THAT(main.Take(), ElementsAre("go http://server/p_mrv_get_essay_work.asp?key=zorbelquinter&pno=4711"
                                       "&workId=w7&mode=GETHTM&cpno="));
  EXPECT_THAT(other.Take(),
              ElementsAre(MatchesRegex("go http://server/p_get_essay_work_teacher.asp\\?tid=[0-9]+"
                                       "&key=zorbelquinter&pno=4711&workId=w8")));
}

TEST_F(BrowserTest, CaptionAndStatusFollowThePage) {
  browser.webOther.TitleChange.Raise("学习");
  EXPECT_EQ(browser.Caption(), "Marovane 瀏覽器 - 學習");
  program.app.gDetailMessage = true;
  browser.webMain.TitleChange.Raise("a");
  EXPECT_EQ(browser.Caption(), "Marovane 瀏覽器 - a(http://engine/)");
  browser.GoWritePage(base::Literal("<p>"), 1);
  EXPECT_EQ(browser.Caption(), "Marovane 瀏覽器") << "until the page has a title";
  browser.webOther.StatusTextChange.Raise("http://link/");
  EXPECT_EQ(browser.lblStatus.Caption(), "http://link/");
}

TEST_F(BrowserTest, ClosingHidesAndTheSizeHasALowerBound) {
  browser.GoNavigate("http://a/", 1);
  browser.Width = 12000;
  browser.Height = 100;
  browser.Form_Resize();
  EXPECT_EQ(browser.Width(), 12000);
  EXPECT_EQ(browser.Height(), 7000);
  EXPECT_EQ(browser.webMain.Width(), 12000);
  machine.user.Close(browser);
  EXPECT_TRUE(!browser.Visible() && program.app.gOpenBrowser);
  browser.GoNavigate("http://a/", 1);
  EXPECT_TRUE(browser.Visible());
  EXPECT_EQ(browser.Width(), 12000) << "it comes back with its old size";
}

}  // namespace

}  // namespace marovane
