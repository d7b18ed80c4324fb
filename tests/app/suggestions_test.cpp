// Suggestions of the real engine on their way over the real server, and back as queries to the word bank.
#include "checking/suggestions.h"

#include "platform/host/curl_http.h"
#include "tests/checking/checking_fixture.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

using namespace ::testing;

class RealSuggestions : public CheckingTest {
 protected:
  RealSuggestions() {
    for (const char* const page :
         {"p_all_webengine_get.asp", "p_passWebEngine_conn.asp", "p_passWebEngine.asp",
          "p_passWebEngine_wbank.asp", "p_getconn.asp", "p_update_useract.asp", "p_getwebhelper.asp"}) {
      machine.http.Route(page, [this](const base::HttpRequest& request) { return curl_.Send(request); });
    }
    app.gPublisherRoot = app.gServerUrlRoot = server_.Root();
    app.gAccountNo = ReadWriteSetFile(machine.realFiles, account_, "R", "Pno", "");
    app.gUseWebEngineWbank = true;
    program.hall.frmSuggest.LeadsTo([this]() -> Suggestions& { return *frmSuggest; });
    program.hall.frmCollocation.LeadsTo([this]() -> WordHelper& { return *frmCollocation; });
  }

  Window<FrmCollocation> frmCollocation{[this] { return std::make_shared<FrmCollocation>(program); }};
  Window<FrmSuggest> frmSuggest{[this] { return std::make_shared<FrmSuggest>(program, frmCollocation); }};

 private:
  std::string account_ = machine.home / "account.set";
  RealServer server_{machine.loop, {"--data", machine.home / "server", "--account", account_}};
  CurlHttp curl_{machine.loop};
};

TEST_F(RealSuggestions, PickedWordComesBackAsItsNearSynonyms) {
  Enter("The building is very big.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_TRUE(frmSuggest->picTab(1).Visible() && !frmSuggest->picTab(0).Visible());
  EXPECT_THAT(frmSuggest->webMain(1).Page(),
              AllOf(HasSubstr("value='big%2CSJ'"), HasSubstr("very big → huge、enormous<")));
  EXPECT_FALSE(frmSuggest->webMain(1).FollowLink("cmd:suggest:big%2CSJ"));
  ASSERT_THAT(fakes.frmBrowser.written, SizeIs(1));
  EXPECT_THAT(fakes.frmBrowser.written[0], AllOf(HasSubstr("large"), HasSubstr("\r\n</div>")));
}

TEST_F(RealSuggestions, PickedPartnerIsInTheListThatItBrings) {
  Enter("There was a big rain this morning.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_THAT(frmSuggest->webMain(0).Page(), HasSubstr("value='rain,CNJ'"));
  EXPECT_FALSE(frmSuggest->webMain(0).FollowLink("cmd:suggest:rain,CNJ"));
  EXPECT_THAT(frmCollocation->cboCollect.Items(), Contains(StartsWith("heavy rain")));
}

}  // namespace

}  // namespace marovane
