#include "views/error_statistics.h"

#include "base/text.h"
#include "tests/views/views_fixture.h"
#include "views/error_statistics_page.h"

namespace marovane {

namespace {

using namespace ::testing;

class FakeErrSentence : public FakeForm<ErrorSentences> {
 public:
  explicit FakeErrSentence(Machine& theMachine) : FakeForm(theMachine, "frmErrSentence") {}
  void ShowErrSentence(const std::string& errcode) override { asked.push_back(errcode); }
  std::vector<std::string> asked;
};

class ErrorStatisticsTest : public ViewsTest {
 protected:
  ErrorStatisticsTest() {
    FakeHall::Lead(program.hall.frmErrSentence, frmErrSentence);
    PutErr({"1", "2026-11-05", "a", "N", "0", "AG01"});
    PutErr({"2", "2026-11-05", "b", "D", "0", "AG01"});   // deleted ones count
    PutErr({"3", "2026-11-05", "c", "N", "77", "AG01"});  // those of essays too
    PutErr({"4", "2026-11-05", "d", "N", "0", "AG99"});   // no code of the catalogue, but of the category
    PutErr({"5", "2026-11-05", "e", "N", "0", "VF01"});
    PutErr({"6", "2026-11-05", "f", "N", "0", "0"});
  }

  FrmErrList& Open() {
    frmErrList->GetHtmlListAllErrType();
    frmErrList->Show();
    return *frmErrList;
  }

  FakeErrSentence frmErrSentence{machine.machine};
  Window<FrmErrList> frmErrList{program, records, errList};
};

TEST_F(ErrorStatisticsTest, CountsCategoriesByPrefixAndCodesByName) {
  PutErr({"7", "2026-11-05", "g", "N", "0", "PR77"});
  std::string tree;
  int steps = 0;
  for (const auto& [category, total, codes] : CountErrors(errList, records, [&] { ++steps; })) {
    tree += category.id + " " + category.name + " " + std::to_string(total) + "\n";
    for (const auto& [code, count] : codes) {
      tree += "- " + code.errcode + " " + code.outline + " " + std::to_string(count) + "\n";
    }
  }
  EXPECT_EQ(tree, "AG 主詞與動詞一致 4\n- AG01 第三人稱單數 3\nPR 介系詞 1\nVF 動詞形式 1\n- VF01 Null 1\n");
  EXPECT_EQ(steps, 4);
}

TEST_F(ErrorStatisticsTest, PageIsATreeWithClosedBranches) {
  const std::string page =
      ErrorStatisticsPage("/opt/m", {{{"AG", "一致"}, 1204, {{{"AG01", "a < b"}, 1203}}}}).Markup();
  for (const char* part : {
           "<img id = 'imgoffAG' src='file:////opt/m/ui/folder-off.gif' border='0' style='display:inline;' "
           "data-flip>",
           "<img id = 'imgonAG' src='file:////opt/m/ui/folder-on.gif' border='0' style='display:none;' "
           "data-flip>",
           "<td data-mark='off' align='left'",
           "href='rem:clear' data-toggle='divAG'>",
           "<font style='font-family: Arial; font-size: 14px; color: #FFCC00'>1,204</font>",
           "<table width='100%' id='divAG' style='display:none;'>",
           "<td id='td_AG01' data-mark width",
           "href='rem:errcode:AG01' data-open='cmd:errcode:AG01'>",
           "<font style='font-family: Arial; font-size: 12px; color: #FFFFFF'>a &lt; b</font>",
           "<font style='font-family: Arial; font-size: 12px; color: #FFCC00'>1,203</font>",
       }) {
    EXPECT_THAT(page, HasSubstr(part));
  }
  EXPECT_THAT(base::Replace(page, "\r\n", ""), Not(ContainsRegex("[\r\n]")));
}

TEST_F(ErrorStatisticsTest, NoMistakesMakeAnEmptyTreeAndTheMainWindowComesBack) {
  db->Run("delete from errsentence");
  fakes.frmMain.Left = 4711;
  FrmErrList& window = Open();
  EXPECT_EQ(fakes.frmMain.Left, 4711);
  EXPECT_THAT(window.webHtml.Page(), HasSubstr("id='table1'>\r\n</table>"));
  ExpectMessage(Message::kChooseMistake);
  machine.user.Click(window.picButtons);
}

TEST_F(ErrorStatisticsTest, LinksRememberAndOpenACode) {
  FrmErrList& window = Open();
  EXPECT_FALSE(window.webHtml.FollowLink("rem:errcode:AG01"));
  machine.user.Click(window.picButtons);
  EXPECT_FALSE(window.webHtml.FollowLink("cmd:errcode:VF01"));
  for (const char* unknown : {"cmd:", "cmd:other"}) EXPECT_FALSE(window.webHtml.FollowLink(unknown));
  EXPECT_THAT(frmErrSentence.asked, ElementsAre("AG01", "VF01"));
  EXPECT_TRUE(frmErrSentence.Visible);
  EXPECT_TRUE(window.webHtml.FollowLink("rem:clear"));
  ExpectMessage(Message::kChooseMistake);
  machine.user.Click(window.picButtons);
  EXPECT_EQ(frmErrSentence.asked.size(), 2);
  EXPECT_TRUE(window.webHtml.FollowLink("http://elsewhere/"));
  frmErrList.Unload();
  EXPECT_FALSE(app.gOpenErrList);
}

}  // namespace

}  // namespace marovane
