#include "settings/publisher.h"

#include "tests/settings/settings_fixture.h"

namespace marovane {

namespace {

class PublisherTest : public SettingsRoomTest {
 protected:
  PublisherTest() { app.gProductCode = "mrv"; }
  /// Lets the start show its news. True when a window came up; the user then ends on a page, ticks or not.
  bool Show(const std::string& endsOn = "", bool ticks = false) {
    bool cameUp = false;
    machine.windows.onShown = [&](Form& form, bool isModal) {
      auto* const news = dynamic_cast<FrmPublisher*>(&form);
      if (news == nullptr) return;
      EXPECT_TRUE(isModal);
      cameUp = true;
      machine.loop.Post([this, news, endsOn, ticks] {
        if (!endsOn.empty()) news->webMain.LocationURL = endsOn;
        if (ticks) machine.user.Click(news->lblNoshow);
        machine.user.Click(news->cmdOK);
      });
    };
    ShowPublisherNews(program, frmPublisher);
    EXPECT_FALSE(frmPublisher.IsLoaded());
    return cameUp;
  }
  Window<FrmPublisher> frmPublisher{[this] { return std::make_shared<FrmPublisher>(program); }};
};

TEST_F(PublisherTest, ComesBackUntilThePageIsNotWantedAgain) {
  machine.http.Route("p_publisher_news.asp", "OK_http://news/?id=1");
  EXPECT_TRUE(Show("http://news/?id=1"));
  EXPECT_TRUE(Show("http://news/?id=1", true));
  EXPECT_FALSE(Show());
  machine.http.Route("p_publisher_news.asp", "OK_http://news/?id=2");
  EXPECT_TRUE(Show("http://elsewhere/", true)) << "another page";
  EXPECT_TRUE(Show()) << "the server names the page that was redirected";
  EXPECT_EQ(machine.http.Bodies("p_publisher_news.asp")[0], "key=zorbelquinter&softcode=mrv");
}

TEST_F(PublisherTest, AnAddressWithoutAPathIsKnownAgain) {
  for (const auto& [named, shown] : {std::pair{"OK_http://news", "http://news/"},
                                     {"OK_http://news?id=1", "http://news/?id=1"},
                                     {"OK_http://news#2", "http://news/#2"}}) {
    machine.http.Route("p_publisher_news.asp", named);
    EXPECT_TRUE(Show(shown, true)) << named;
    EXPECT_FALSE(Show()) << named;
  }
}

TEST_F(PublisherTest, WithoutNewsThereIsNoWindow) {
  for (const char* reply : {"OK_", "ERR_NONEWS", "", "http://news/", "OK\xA4"}) {
    machine.http.Route("p_publisher_news.asp", reply);
    EXPECT_FALSE(Show()) << reply;
  }
  machine.http.RouteToNowhere("p_publisher_news.asp");
  EXPECT_FALSE(Show());
}

}  // namespace

}  // namespace marovane
