#include "core/server_access.h"

#include "base/cp950.h"
#include "base/day.h"
#include "core/engine_client.h"
#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

class ServerAccessTest : public CoreTest {
 protected:
  static constexpr const char* kProbe = "p_getconn.asp";
  static constexpr const char* kAllot = "p_all_webengine_get.asp";

  FakeHttp& http_ = machine.http;
};

TEST_F(ServerAccessTest, RequestsCarryBothHeadersAndTheBodyAsItIs) {
  http_.Route("p_x.asp", base::ToCp950("OK_好"), 500);
  EXPECT_EQ(PostForm(program, "http://server/p_x.asp", "key=中 &"), "OK_好") << "whatever the status";
  ASSERT_THAT(http_.requests, SizeIs(1));
  EXPECT_EQ(http_.requests[0].method, "POST");
  EXPECT_EQ(http_.requests[0].body, "key=中 &");
  EXPECT_THAT(http_.requests[0].headers,
              ElementsAre(Pair("Content-Type", "application/x-www-form-urlencoded"),
                          Pair("Content-Type", "text/xml; charset=big5")));
}

TEST_F(ServerAccessTest, ProbeBringsTheServersDate) {
  const struct {
    const char* reply;
    bool isOnline;
    const char* date;
  } cases[] = {{"ONLINE", true, "1899/12/30"},
               {"ONLINE#2026/11/5", true, "2026/11/5"},
               {"ONLINE, 2025-01-31 08:00:00", true, "2025/1/31"},
               {"ONLINE_soon", true, "1899/12/30"},
               {"online#2026/11/5", false, "1899/12/30"},
               {"OFFLINE", false, "1899/12/30"},
               {"", false, "1899/12/30"},
               {"ONLINE#2026/11/5\xA4", false, "1899/12/30"}};
  for (const auto& [reply, isOnline, date] : cases) {
    app.gServerDate = AppState{}.gServerDate;
    http_.Route(kProbe, reply);
    EXPECT_EQ(IsServerOnline(program), isOnline) << reply;
    EXPECT_EQ(base::ShownDay(app.gServerDate), date) << reply;
  }
  http_.RouteToNowhere(kProbe);
  EXPECT_FALSE(IsServerOnline(program));
  EXPECT_EQ(http_.requests.back().url, "http://server/p_getconn.asp");
  EXPECT_THAT(http_.Bodies(kProbe), Each(std::string("key=zorbelquinter")));
}

TEST_F(ServerAccessTest, EngineAddressIsWhatComesAfterOk) {
  const struct {
    const char *reply, *address;
  } cases[] = {{"OK_ http://engine/ ", "http://engine/"},
               {"OKAY", "OKAY"},
               {"OK_", ""},
               {"OK_OK_x", "x"},
               {"ok_x", ""},
               {"ERR_NONE", ""}};
  for (const auto& [reply, address] : cases) {
    http_.Route(kAllot, reply);
    EXPECT_EQ(GetWebEngineAddress(program, "http://other/"), address) << reply;
    EXPECT_EQ(http_.requests.back().url, "http://other/p_all_webengine_get.asp");
  }
  http_.RouteToNowhere(kAllot);
  EXPECT_THROW(GetWebEngineAddress(program, "http://other/"), RunTimeError);
}

TEST_F(ServerAccessTest, AllotsAnEngineThatAnswers) {
  http_.Queue(kAllot, "OK_");
  http_.Queue(kAllot, "OK_http://dead/");
  http_.Queue(kAllot, "OK_http://engine/");
  http_.RouteToNowhere("dead/p_passWebEngine_conn.asp");
  http_.Route("engine/p_passWebEngine_conn.asp", "ONLINE");
  EXPECT_TRUE(EngineClient(program, {.wantsMoreAttempts = [] { return false; }}).IsOnline());
  EXPECT_EQ(app.gWebEngineRoot, "http://engine/");
  EXPECT_THAT(http_.Bodies(kAllot), SizeIs(3));
  EXPECT_TRUE(IsWebEngineOnline(program));
  EXPECT_THAT(http_.Bodies(kAllot), SizeIs(3)) << "a plain probe allots nothing";
}

TEST_F(ServerAccessTest, PackedPageGoesOutAsAFormInTheBrowser) {
  app.gAccountNo = "4711";
  PostDecodeForm(program, "64O185");
  EXPECT_THAT(
      fakes.frmBrowser.posted,
      ElementsAre("2 <html>\r\n<head>\r\n<meta http-equiv='Content-Language' content='zh-tw'>\r\n"
                  "<meta http-equiv='Content-Type' content='text/html; charset=big5'>\r\n<title></title>\r\n"
                  "</head>\r\n<body>\r\n"
                  "<form name='frmPost' method='POST' action='http://server/p_decode.asp'>\r\n"
                  "<input type='HIDDEN' name='key' value='zorbelquinter'>\r\n"
                  "<input type='HIDDEN' name='pno' value='4711'>\r\n"
                  "<input type='HIDDEN' name='code' value='64O185'>\r\n</body>\r\n</html>\r\n"));
}

}  // namespace

}  // namespace marovane
