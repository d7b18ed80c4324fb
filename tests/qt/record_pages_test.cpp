// The pages of the records on the real engine: their scripts, their commands, and marks that the program
// sets.
#include <gmock/gmock.h>

#include "tests/qt/program_windows.h"
#include "views/day_sentences_page.h"
#include "views/error_statistics_page.h"

namespace {

using testing::ElementsAre;

class FrmPage : public Form {
 public:
  explicit FrmPage(Machine& theMachine) : Form(theMachine, "frmPage") {}
  WebBrowser webMain{*this, "webMain"};
  CommandButton cmdGo{*this, "cmdGo"};
};

/// Shows a page together with a script that acts as its reader does and reports in the title.
class ReadPage {
 public:
  ReadPage(const std::string& page, const std::string& script) {
    WebBrowser& web = form_->webMain;
    web.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
      commands.push_back(url);
      cancel = url != "rem:clear";
    };
    web.DocumentComplete = [this](const std::string&) { isComplete = true; };
    web.TitleChange = [this](const std::string& title) { report = title; };
    form_->Show();
    web.Write(page + "<script>const at = id => document.getElementById(id);" + script + "</script>");
  }

  void WaitForReport(const std::string& wanted) {
    machine_.Wait([&] { return report == wanted; });
  }
  void WaitForCommands(std::size_t count) {
    machine_.Wait([&] { return commands.size() >= count && isComplete; });
  }
  WebBrowser& Browser() { return form_->webMain; }
  void ClickGo() {
    form_->cmdGo.Click = [] {};
    machine_.windows.Find(*form_)->Find(form_->cmdGo)->ClickIt();
  }

  std::vector<std::string> commands;
  std::string report;
  bool isComplete = false;

 private:
  QtMachine machine_{MAROVANE_TEST_UI_FOLDER};
  Window<FrmPage> form_{[this] { return std::make_shared<FrmPage>(machine_.machine); }};
};

TEST(RecordPages, TheTreeOpensItsBranchesAndMarksTheChosenCode) {
  const std::string tree = ErrorStatisticsPage(
      MAROVANE_UI_FOLDER "/..", {{{"AG", "一致"}, 3, {{{"AG01", "動詞"}, 2}, {{"AG02", "主詞"}, 1}}}});
  ReadPage page(tree,
                "const look = () => at('divAG').style.display + at('imgonAG').style.display +"
                "  at('td_AG01').style.backgroundColor + at('td_AG02').style.backgroundColor;"
                "const category = document.querySelector('#table1 a');"
                "category.click();"
                "setTimeout(() => { at('td_AG01').querySelector('a').click(); }, 100);"
                "setTimeout(() => { at('td_AG02').querySelector('a').click(); }, 200);"
                "setTimeout(() => { at('td_AG02').querySelector('a').dispatchEvent("
                "  new MouseEvent('dblclick', {bubbles: true})); }, 300);"
                "setTimeout(() => { document.title = look(); }, 400);");
  page.WaitForReport("inlineinlinergb(88, 88, 88)rgb(0, 0, 0)");
  page.WaitForCommands(4);
  EXPECT_THAT(page.commands,
              ElementsAre("rem:clear", "rem:errcode:AG01", "rem:errcode:AG02", "cmd:errcode:AG02"));
}

TEST(RecordPages, ADoubleClickTicksTheSentenceAndAsksForIt) {
  const std::string list = DaySentencesPage({{"11", "He’s \"here\"."}, {"12", "She reads."}}, {});
  ReadPage page(
      list, "document.querySelectorAll('a')[0].dispatchEvent(new MouseEvent('dblclick', {bubbles: true}));");
  page.WaitForCommands(1);
  EXPECT_THAT(page.commands, ElementsAre("cmd:passEngine"));
  EXPECT_TRUE(page.Browser().Checked("chk1"));
  EXPECT_FALSE(page.Browser().Checked("chk2"));
  EXPECT_EQ(page.Browser().Value("rec1"), "He's \"here\".");
  EXPECT_EQ(page.Browser().Value("chk2"), "12");
  page.Browser().SetChecked({{"chk1", false}, {"chk2", true}, {"chk3", true}});
  page.Browser().inputChecked.clear();
  page.ClickGo();  // a click brings the marks over
  EXPECT_FALSE(page.Browser().Checked("chk1"));
  EXPECT_TRUE(page.Browser().Checked("chk2"));
}

}  // namespace
