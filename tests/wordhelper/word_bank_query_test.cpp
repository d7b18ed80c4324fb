#include "platform/run_time_error.h"
#include "tests/wordhelper/collocation_fixture.h"
#include "wordhelper/word_bank_text.h"

namespace marovane {

namespace {

using namespace ::testing;
using Seconds = std::chrono::seconds;

class WebQuery : public CollocationTest {
 protected:
  void Ask(const std::string& mode, const std::string& reply, const std::string& para = "rain,CNV") {
    machine.http.Route("p_passWebEngine_wbank.asp", base::ToCp950(reply));
    app.gSuggestMode = mode;
    Helper().PassEngineCheckWBank(para);
  }
};

TEST_F(WebQuery, PartnersFillTheListAndAnArrowBlinks) {
  Helper().Show();
  Ask("collo", "OK_ rain falls >> 下雨<@>  <@> heavy rain ");
  EXPECT_THAT(machine.http.Bodies("p_passWebEngine_wbank.asp"),
              ElementsAre("key=zorbelquinter&para=rain,CNV"));
  EXPECT_THAT(Helper().cboCollect.Items(), ElementsAre("rain falls >> 下雨", "heavy rain"));
  EXPECT_EQ(Helper().cboCollect.ListIndex(), 0);
  EXPECT_EQ(Helper().lblCollectMessage.Caption(), "查看含 [rain falls] 的例句");
  EXPECT_TRUE(ShowsResults() && Helper().cboCollect.Enabled() && Helper().Enabled());
  EXPECT_TRUE(Helper().picButtons(0).Visible() && Helper().picButtons(1).Visible());
  EXPECT_EQ(app.gSuggestMode, "");
  EXPECT_THAT(Acts(), ElementsAre("collo"));
  // The arrow blinks for four seconds.
  const auto before = machine.loop.Elapsed();
  std::vector<bool> seen;
  const auto watch = Helper().imgArrow.Visible.Watch([&](bool visible) { seen.push_back(visible); });
  machine.loop.WaitUntil([this] { return !Helper().tmrArrow.Enabled(); });
  EXPECT_EQ(machine.loop.Elapsed() - before, Seconds{4});
  EXPECT_GE(seen.size(), 7U);
  EXPECT_TRUE(Helper().imgArrow.Visible());
}

TEST_F(WebQuery, SynonymsBecomeAPage) {
  const std::pair<const char*, const char*> cases[] = {
      {"similar", ">glad<br />content &gt;&gt; 滿足<br /></div>"},
      {"similar_2", ">glad\r\ncontent &gt;&gt; 滿足\r\n</div>"}};
  for (const auto& [mode, page] : cases) {
    Ask(mode, "OK_glad<@> <@>content >> 滿足<@>", "happy,SJ");
    ASSERT_THAT(fakes.frmBrowser.written, Not(IsEmpty()));
    EXPECT_THAT(fakes.frmBrowser.written.back(),
                AllOf(StartsWith("1 <html>"), HasSubstr(page), HasSubstr("background-color: #FFFFFF;"),
                      HasSubstr("font-family:Cambria"), EndsWith("</html>\r\n")));
    EXPECT_EQ(Acts().back(), "similar");
    EXPECT_FALSE(ShowsResults() || Helper().Visible());
  }
  Ask("other", "OK_glad");
  EXPECT_THAT(fakes.frmBrowser.written, SizeIs(2)) << "another mode shows nothing";
  EXPECT_EQ(Acts().back(), "other");
}

TEST_F(WebQuery, NothingFoundKeepsTheOldList) {
  Helper().Show();
  Ask("collo", "OK_heavy rain");
  for (const char* reply : {"OK_", "OK_   ", "OK_抱歉找不到資料<@>x", "OK_<@> <@>"}) {
    ExpectMessage(Message::kNoPartners);
    Ask("collo", reply);
    EXPECT_THAT(Helper().cboCollect.Items(), ElementsAre("heavy rain"));
    EXPECT_FALSE(Helper().cboCollect.Enabled());
    EXPECT_TRUE(Helper().Enabled() && Helper().picButtons(0).Visible());
    EXPECT_FALSE(Helper().picButtons(2).Visible()) << "it comes back with the next good reply";
    EXPECT_EQ(app.gSuggestMode, "");
  }
  EXPECT_THAT(Acts(), SizeIs(5)) << "also when nothing was found";
  Ask("collo", "OK_rain falls");
  EXPECT_TRUE(ShowsResults() && Helper().cboCollect.Enabled());
}

TEST_F(WebQuery, AsksAgainUntilThirtySecondsAreOver) {
  Helper().Show();
  machine.http.Queue("p_passWebEngine_wbank.asp", [](const base::HttpRequest&) -> base::HttpResponse {
    throw RunTimeError("broken transfer");
  });
  Ask("collo", "OK_heavy rain");
  EXPECT_THAT(Helper().cboCollect.Items(), ElementsAre("heavy rain"));
  const auto before = machine.loop.Elapsed();
  ExpectMessage(Message::kNoEngineReply);
  Ask("similar", "ERR_ENGINE");
  EXPECT_GE(machine.loop.Elapsed() - before, Seconds{30});
  EXPECT_LE(machine.loop.Elapsed() - before, Seconds{35});
  EXPECT_TRUE(Helper().Enabled() && Helper().picButtons(1).Visible());
  EXPECT_EQ(app.gSuggestMode, "");
  EXPECT_THAT(Acts(), ElementsAre("collo")) << "no use is reported after a time-out";
}

TEST_F(WebQuery, AsksTheLearnerWhenNoEngineIsAllottedAndShowsItsAddressInDetail) {
  for (int i = 0; i < 10; ++i) machine.http.Queue("p_all_webengine_get.asp", "ERR");
  app.gDetailMessage = true;
  ExpectMessage(Message::kNoEngineAddress);
  Ask("collo", "OK_heavy rain");
  EXPECT_THAT(Helper().cboCollect.Items(), ElementsAre("heavy rain"));
  EXPECT_EQ(Helper().lblCaps.Caption(), "http://engine/");
}

TEST_F(WebQuery, NoticeThatDoesNotArriveCostsNothing) {
  machine.http.RouteToNowhere("p_update_useract.asp");
  Ask("collo", "OK_heavy rain");
  EXPECT_THAT(Helper().cboCollect.Items(), ElementsAre("heavy rain"));
  machine.http.RouteToNowhere("p_getconn.asp");
  Ask("collo", "OK_rain falls");
  EXPECT_THAT(Acts(), SizeIs(1)) << "without a network none is sent";
}

class LocalQuery : public CollocationTest {
 protected:
  LocalQuery() {
    app.gUseWebEngineWbank = false;
    machine.realFiles.Write(app.gEngineDir + "wexbin.exe", "", false);
  }
  /// An engine that answers with this file, whose path it writes into the exchange file.
  void InstallEngine(const std::string& bytes) {
    Put(ResultFile(), bytes);
    InstallEngineOf(ResultFile());
  }
  void InstallEngineOf(const std::string& path) {
    machine.processes.Install(
        "wexbin.exe", std::chrono::milliseconds{700}, [this, path](const base::ProcessStart&) {
          ReadWriteSetFile(machine.realFiles, app.gRegistryFile, "W", "collocationListHtm", path);
        });
  }
  void Ask(const std::string& mode) {
    app.gSuggestMode = mode;
    Helper().PassEngineCheckWBank("rain,CNV");
  }
  std::string ResultFile() { return app.gEngineDir + "answer.txt"; }
  std::string Registry() { return Content(app.gRegistryFile).value_or(""); }
};

TEST_F(LocalQuery, ReadsTheAnswerAsItIs) {
  Put(app.gRegistryFile, "broken first line\r\nsentence=He goes.\r\n");
  machine.processes.Add("wexbin.exe", app.gEngineDir);
  InstallEngine(base::ToCp950("<title>rain\r\n heavy rain >> 大雨 \r\n\r\nrain falls\r\n"));
  Helper().Show();
  Ask("collo");
  EXPECT_EQ(machine.processes.terminated.size(), 1U) << "one that hung from the time before";
  const auto& start = machine.processes.started.at(0);
  EXPECT_THAT(start.arguments, ElementsAre("rain,CNV"));
  EXPECT_EQ(start.program.string(), app.gEngineDir + "wexbin.exe");
  EXPECT_EQ(start.workingFolder.string(), app.gEngineDir);
  EXPECT_THAT(Helper().cboCollect.Items(), ElementsAre(" heavy rain >> 大雨 ", "", "rain falls"))
      << "blank lines too";
  EXPECT_EQ(Helper().lblCollectMessage.Caption(), "查看含 [heavy rain] 的例句");
  EXPECT_TRUE(ShowsResults() && Helper().Enabled());
  EXPECT_EQ(Content(ResultFile()), std::nullopt);
  EXPECT_THAT(Registry(), AllOf(StartsWith(kRegistryMarker), HasSubstr("sentence=He goes.")));
  EXPECT_EQ(app.gSuggestMode, "collo") << "only the way over the server clears it";
  EXPECT_THAT(Acts(), ElementsAre("collo"));
}

TEST_F(LocalQuery, SynonymsShowNothing) {
  InstallEngine("<title>happy\r\nglad\r\n");
  for (const char* mode : {"similar", "similar_2"}) {
    Ask(mode);
    EXPECT_THAT(fakes.frmBrowser.written, IsEmpty());
    EXPECT_FALSE(ShowsResults());
    EXPECT_NE(Content(ResultFile()), std::nullopt) << "the file stays where it is";
    EXPECT_EQ(app.gSuggestMode, mode);
    EXPECT_EQ(Acts().back(), mode);
    EXPECT_TRUE(Helper().Enabled() && Helper().picButtons(0).Visible() && Helper().picButtons(1).Visible());
  }
}

TEST_F(LocalQuery, SilenceLeavesTheWindowDisabled) {
  machine.processes.InstallHanging("wexbin.exe");
  for (const bool writesNothing : {false, true}) {
    if (writesNothing) machine.processes.Install("wexbin.exe", std::chrono::milliseconds{10});
    Helper().Enabled = true;
    const auto before = machine.loop.Elapsed();
    ExpectMessage(Message::kNoEngineReply);
    Ask("collo");
    EXPECT_GE(machine.loop.Elapsed() - before, Seconds{5});
    EXPECT_LE(machine.loop.Elapsed() - before, Seconds{7});
    EXPECT_FALSE(Helper().Enabled());
    EXPECT_TRUE(Helper().picButtons(0).Visible() && Helper().picButtons(1).Visible());
    EXPECT_EQ(app.gSuggestMode, "collo");
    EXPECT_THAT(Acts(), IsEmpty());
  }
}

TEST_F(LocalQuery, BadAnswersGetAWordAndGiveTheWindowBack) {
  const struct {
    const char* what;
    const Message& message;
    std::function<void()> arrange;
  } cases[] = {
      {"no engine", Message::kNoEngineReply, [] {}},
      {"no file", Message::kNoEngineReply, [this] { InstallEngineOf("/no/such"); }},
      {"half a character", Message::kNoEngineReply, [this] { InstallEngine("<title>rain\r\nheavy \xA4"); }},
      {"only a title", Message::kNoPartners, [this] { InstallEngine("<title>rain"); }},
      {"an empty file", Message::kNoPartners, [this] { InstallEngine(""); }},
  };
  Helper().Show();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    c.arrange();
    ExpectMessage(c.message);
    Ask("collo");
    EXPECT_TRUE(Helper().Enabled() && Helper().picButtons(0).Visible());
    EXPECT_THAT(Helper().cboCollect.Items(), IsEmpty());
  }
}

}  // namespace

}  // namespace marovane
