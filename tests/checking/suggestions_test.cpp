#include "checking/suggestions.h"

#include "checking/suggest_page.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

TEST(SuggestPage, PartsOfSpeechGiveTheQuery) {
  const std::pair<const char*, const char*> cases[] = {{"rain 名詞 fall 動詞", "rain,CNV"},
                                                       {"rain 名詞 heavy 形容詞", "rain,CNJ"},
                                                       {"rain (名詞) in 介系詞", "rain,CNP"},
                                                       {"run 動詞 fast 副詞", "run,CVM"},
                                                       {"happy 形容詞 very 副詞", "happy,CJM"}};
  for (const auto& [item, query] : cases) EXPECT_EQ(GetSuggestParameter(item), query);
  for (const char* none : {"run 動詞 way 名詞", "rain 名詞", "rain", "", "rain  名詞 fall 動詞"}) {
    EXPECT_EQ(GetSuggestParameter(none), "") << none;
  }
}

TEST(SuggestPage, ListsAreReadByKind) {
  const auto read = [](const char* kind, const char* list, const char* separator = ",") {
    std::vector<std::string> all;
    for (const auto& s : ReadSuggestions(kind, list, separator)) all.push_back(s.value + "=" + s.text);
    return all;
  };
  EXPECT_THAT(read("COL", " rain 名詞 fall 動詞 , ,odd item"),
              ElementsAre("rain,CNV=rain 名詞 fall 動詞", "=odd item"));
  EXPECT_THAT(read("SYN", "happy%2CSJ||glad,no bars,||b,a||, x||y||z "),
              ElementsAre("happy%2CSJ=glad", "x=y||z"));
  EXPECT_THAT(read("COL", "a 名詞 b 動詞\n\n c, d\n", "\n"), ElementsAre("a,CNV=a 名詞 b 動詞", "=c, d"));
  EXPECT_THAT(read("COL", ""), IsEmpty());
}

TEST(SuggestPage, QuotesWhatWouldBreakIt) {
  const std::string page = SuggestPage("/opt/a'b", {{"it's<", "<b>"}, {"", "odd"}}).Markup();
  EXPECT_THAT(page, AllOf(HasSubstr("id='suggest1' value='it&#39;s&lt;'"), HasSubstr("&lt;b&gt;</font>"),
                          HasSubstr("id='suggest2' value=''"),
                          HasSubstr("file:////opt/a&#39;b/ui/btnok_on.gif"), Not(HasSubstr("suggest3"))));
}

class SuggestWindow : public CheckingTest {
 protected:
  SuggestWindow() {
    app.gUseWebEngineWbank = true;
    machine.http.Route("p_passWebEngine_wbank.asp", base::ToCp950("OK_heavy rain >> 大雨"));
    machine.http.Route("p_getconn.asp", "ONLINE");
    machine.http.Route("p_update_useract.asp", "OK_");
    machine.http.Route("p_getwebhelper.asp", "");
    program.hall.frmSuggest.LeadsTo([this]() -> Suggestions& { return *frmSuggest; });
    program.hall.frmCollocation.LeadsTo([this]() -> WordHelper& { return *frmCollocation; });
    Main().Show();
  }
  FrmSuggest& Suggest() { return *frmSuggest; }
  std::string AskedLast() { return machine.http.Bodies("p_passWebEngine_wbank.asp").back(); }

  Window<FrmCollocation> frmCollocation{[this] { return std::make_shared<FrmCollocation>(program); }};
  Window<FrmSuggest> frmSuggest{[this] { return std::make_shared<FrmSuggest>(program, frmCollocation); }};
};

TEST_F(SuggestWindow, OpensForARightSentenceWithTheTabsThatItHas) {
  const struct {
    const char* reply;
    bool col, syn;
  } cases[] = {
      {"OK_0#0#p.htm#rain 名詞 fall 動詞<@>rain 名詞 heavy 形容詞#happy%2CSJ||glad", true, true},
      {"OK_0#0#p.htm##happy%2CSJ||glad", false, true},
      {"OK_0#0#p.htm#rain 名詞 fall 動詞#0", true, false},
  };
  for (const auto& [reply, col, syn] : cases) {
    SCOPED_TRACE(reply);
    machine.http.Route("p_passWebEngine.asp", base::ToCp950(reply));
    Enter("It rains.");
    FrmSuggest& window = Suggest();
    EXPECT_TRUE(app.gOpenSuggest && window.Visible());
    EXPECT_EQ(std::pair(window.picTab(0).Visible(), window.picTab(1).Visible()), std::pair(col, syn));
    const int shown = syn ? 1 : 0;
    EXPECT_TRUE(window.webMain(shown).Visible() && !window.webMain(1 - shown).Visible());
    EXPECT_THAT(window.webMain(shown).Page(), HasSubstr(syn ? ">glad<" : ">rain 名詞 fall 動詞<"));
    EXPECT_NE(window.lblTab(shown).ForeColor(), window.lblTab(1 - shown).ForeColor());
  }
  machine.user.Click(Suggest().imgClose);
  machine.loop.WaitUntil([this] { return !frmSuggest.IsLoaded(); });
  EXPECT_FALSE(app.gOpenSuggest);
  machine.http.Route("p_passWebEngine.asp", "OK_0#0#p.htm#0#0");
  Enter("It rains.");
  EXPECT_FALSE(frmSuggest.IsLoaded());
}

TEST_F(SuggestWindow, GrowsWithItsItemsAndNeverShrinks) {
  Suggest().Height = 3000;
  const auto show = [this](int items) {
    std::string list;
    for (int i = 0; i < items; ++i) list += "rain 名詞 fall 動詞,";
    Suggest().ShowSuggest("COL", list);
    return Suggest().Height();
  };
  EXPECT_EQ(show(2), 3000);
  EXPECT_EQ(show(10), 6350);
  EXPECT_EQ(show(1), 6350);
  machine.windows.screen = {0, 0, 18000, 9000};
  EXPECT_EQ(show(100), 9000) << "its lower edge stays on the screen";
  EXPECT_LE(Suggest().Top() + Suggest().Height(), 9000);
  Suggest().ShowSuggest("OTHER", "a,b");
}

TEST_F(SuggestWindow, ListMayComeFromAFile) {
  const std::string path = app.gTempDir + "/col.txt";
  machine.realFiles.Write(path, base::ToCp950("rain 名詞 fall 動詞\r\n\r\nrun 動詞 fast 副詞\r\n"), false);
  Suggest().ShowSuggest("COL", path);
  EXPECT_THAT(Suggest().webMain(0).Page(),
              AllOf(HasSubstr("value='rain,CNV'"), HasSubstr("value='run,CVM'"), Not(HasSubstr("suggest3"))));
}

TEST_F(SuggestWindow, PickedPartnerGoesToTheWordHelper) {
  EXPECT_FALSE(Suggest().webMain(0).FollowLink("cmd:suggest:happy%2CCJM"));
  auto& helper = *frmCollocation;
  EXPECT_TRUE(helper.Visible() && helper.picFormTabs(2).Visible());
  EXPECT_EQ(helper.txtKeyword(0).Text(), "happy");
  EXPECT_TRUE(helper.optPara1(2).Value() && helper.optPara2(1).Value());
  EXPECT_THAT(helper.cboCollect.Items(), ElementsAre("heavy rain >> 大雨"));
  EXPECT_EQ(AskedLast(), "key=zorbelquinter&para=happy,CJM");
  EXPECT_TRUE(Suggest().webMain(0).FollowLink("http://elsewhere/"));
  machine.http.Route("p_passWebEngine_wbank.asp", "OK_");
  ExpectMessage(Message::kNoPartners);
  EXPECT_FALSE(Suggest().webMain(0).FollowLink("cmd:suggest:")) << "an item without a query";
  EXPECT_EQ(frmCollocation->txtKeyword(0).Text(), "");
}

TEST_F(SuggestWindow, PickedSynonymStaysWithTheBrowser) {
  Suggest().ShowSuggest("SYN", "happy%2CSJ||glad");
  EXPECT_FALSE(Suggest().webMain(1).FollowLink("cmd:suggest:happy%2CSJ"));
  EXPECT_EQ(AskedLast(), "key=zorbelquinter&para=happy,SJ");
  EXPECT_FALSE(frmCollocation->Visible());
  ASSERT_EQ(fakes.frmBrowser.written.size(), 1U);
  EXPECT_THAT(fakes.frmBrowser.written[0], HasSubstr("heavy rain &gt;&gt; 大雨\r\n</div>"))
      << "lines close without a break";
}

}  // namespace

}  // namespace marovane
