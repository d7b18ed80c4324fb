#include "wordhelper/web_sources.h"

#include "platform/run_time_error.h"
#include "tests/wordhelper/collocation_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

TEST(WebSources, AddressIsEncodedForSitesThatWantIt) {
  EXPECT_EQ(AddressOf({"", "en", "en", "http://a/中?<String2chk>&<String2chk>"}, "heavy rain"),
            "http://a/中?heavy rain&heavy rain");
  EXPECT_EQ(AddressOf({"", "cn", "cn", "http://a/中?<String2chk>"}, "%E4%BD%A0 a"),
            "http://a/%E4%B8%AD?%E4%BD%A0 a")
      << "what is encoded stays";
}

TEST(WebSources, RememberedChoiceIsANameOrAnOldNumber) {
  const std::vector<std::string> names{"字典", "Corpus", "3", "Corpus"};
  const std::vector<std::pair<std::string, int>> cases{{"", 0},  {"Corpus", 1}, {"字典", 0}, {"Gone", 0},
                                                       {"2", 2}, {"3", 2},      {"4", 0},    {"x", 0},
                                                       {"-", 0}, {"12", 0},     {"中", 0}};
  for (const auto& [chosen, index] : cases) EXPECT_EQ(IndexOfChosen(names, chosen), index) << chosen;
  EXPECT_EQ(IndexOfChosen({"A", "B", "C"}, "2"), 2);
}

class SourceLists : public CollocationTest {
 protected:
  std::vector<std::string> Chosen() {
    std::vector<std::string> names;
    for (int i = 0; i < 3; ++i) names.push_back(Helper().cboWebSource(i).Text());
    return names;
  }
};

TEST_F(SourceLists, AreFilledByKindInParallel) {
  machine.http.Route("p_getwebhelper.asp",
                     base::ToCp950("字典#cn#cn#c/##String2chk##<@>Corpus#En#CN#k/##String2chk##"));
  auto& helper = Helper();
  EXPECT_THAT(machine.http.Bodies("p_getwebhelper.asp"), ElementsAre("key=zorbelquinter"));
  EXPECT_THAT(helper.cboWebSource(0).Items(), ElementsAre("字典"));
  EXPECT_THAT(helper.cboWebSourceUrl(0).Items(), ElementsAre("c/<String2chk>"));
  for (int i = 1; i < 3; ++i) {
    EXPECT_THAT(helper.cboWebSource(i).Items(), ElementsAre("Corpus"));
    EXPECT_THAT(helper.cboWebSourceLang(i).Items(), ElementsAre("cn"));
    EXPECT_THAT(helper.cboWebSourceUrl(i).Items(), ElementsAre("k/<String2chk>"));
  }
  EXPECT_THAT(Chosen(), ElementsAre("字典", "Corpus", "Corpus")) << "without a file the first ones";
  std::string reply;
  helper.GetCollectUrlSet(reply);
  EXPECT_THAT(reply, StartsWith("字典#cn#cn#c/<String2chk>"));
  EXPECT_THAT(helper.cboWebSource(2).Items(), ElementsAre("Corpus")) << "emptied before they are filled";
}

TEST_F(SourceLists, ChoiceComesBackFromTheFile) {
  const struct {
    const char* what;
    std::string file;
    std::vector<std::string> chosen;
  } cases[] = {
      {"names", "字典\r\nCorpus\r\n例句\r\n", {"字典", "Corpus", "例句"}},
      {"a source that has gone", "字典\r\nGone\r\nCorpus\r\n", {"字典", "例句", "Corpus"}},
      {"numbers of an older program", "0\r\n1\r\n9\r\n", {"字典", "Corpus", "例句"}},
      {"line feeds alone, blanks, no last line end", "\n Corpus \nCorpus", {"字典", "Corpus", "Corpus"}},
      {"too few lines", "字典\r\n", {"字典", "例句", "例句"}},
      {"no digit", "x\r\ny\r\nCorpus\r\n", {"字典", "例句", "Corpus"}},
      {"empty", "", {"字典", "例句", "例句"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Put(SourcesFile(), base::ToCp950(c.file));
    frmCollocation.Unload();
    EXPECT_EQ(Chosen(), c.chosen);
  }
  Put(SourcesFile(), "\xA4\r\nCorpus\r\n\xA4");
  frmCollocation.Unload();
  EXPECT_THAT(Chosen(), ElementsAre("字典", "Corpus", "例句")) << "half a character";
}

TEST_F(SourceLists, CloseRemembersTheChoice) {
  Helper().Show();
  Helper().picTabs_Click(1);
  machine.user.Choose(Helper().cboWebSource(1), 1);
  machine.user.Click(Helper().imgClose);
  EXPECT_FALSE(app.gOpenCollocation);
  EXPECT_EQ(Content(SourcesFile()), base::ToCp950("字典\r\nCorpus\r\n例句\r\n"));
  machine.loop.WaitUntil([this] { return !frmCollocation.IsLoaded(); });
  EXPECT_THAT(Chosen(), ElementsAre("字典", "Corpus", "例句"));
}

TEST_F(SourceLists, WithoutANetworkTheWindowOpensAndLosesNoChoice) {
  const std::string before = base::ToCp950("字典\r\nCorpus\r\n例句\r\n");
  Put(SourcesFile(), before);
  for (const char* page : {"p_getwebhelper.asp", "p_getconn.asp"}) {
    SCOPED_TRACE(page);
    machine.http.RouteToNowhere(page);
    Helper().Show();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Helper().cboWebSource(i).ListIndex(), -1);
    ExpectMessage(Message::kNoSource);
    TypeOnTab(1, Helper().txtFreeword(1), "heavy rain");
    machine.user.Click(Helper().picSearchs(1));
    EXPECT_THAT(machine.desktop.opened, IsEmpty());
    EXPECT_EQ(app.gSuggestMode, "");
    machine.user.Close(Helper());
    EXPECT_EQ(Content(SourcesFile()), before);
    machine.loop.WaitUntil([this] { return !frmCollocation.IsLoaded(); });
  }
}

TEST_F(SourceLists, OneEmptyListKeepsItsOldChoice) {
  Put(SourcesFile(), base::ToCp950("字典\r\nGone\r\n例句\r\n"));
  machine.http.Route("p_getwebhelper.asp", base::ToCp950("新字典#cn#cn#u"));
  Helper().Show();
  machine.user.Close(Helper());
  EXPECT_EQ(Content(SourcesFile()), base::ToCp950("新字典\r\nGone\r\n例句\r\n"));
}

TEST_F(SourceLists, ShortRecordsAreReportedAndTheOthersServe) {
  const struct {
    std::string reply;
    bool isReported;
    std::size_t sources;
  } cases[] = {{base::ToCp950("壞#cn<@>例句#en#en#u"), true, 1}, {"ERR_SERVER", true, 0}, {"\xA4", false, 0}};
  for (const auto& c : cases) {
    frmCollocation.Unload();
    machine.http.Route("p_getwebhelper.asp", c.reply);
    if (c.isReported) ExpectMessage(Message::kBadSourceList);
    Helper().Show();
    EXPECT_TRUE(Helper().Visible());
    EXPECT_EQ(Helper().cboWebSource(1).Items().size(), c.sources);
  }
}

TEST_F(SourceLists, FileThatCannotBeWrittenDoesNotHoldTheWindow) {
  Helper().Show();
  machine.files.fault.FailAt(machine.files.fault.Steps() + 1);
  EXPECT_THROW(machine.user.Click(Helper().imgClose), RunTimeError) << "which the program reports";
  machine.loop.WaitUntil([this] { return !frmCollocation.IsLoaded(); });
}

}  // namespace

}  // namespace marovane
