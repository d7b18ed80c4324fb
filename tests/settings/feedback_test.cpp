#include "settings/feedback.h"

#include <fmt/format.h>

#include "core/set_file.h"
#include "core/text_utility.h"
#include "platform/database.h"
#include "platform/host/curl_http.h"
#include "platform/html.h"
#include "tests/settings/settings_fixture.h"
#include "tests/support/real_server.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::StartsWith;

constexpr const char* kSentence = "It's Tom's \"pen\" & <b>book</b>.";

/// Keeps what is written and what is submitted.
class RecordingRenderer : public WebRenderer {
 public:
  void Navigate(const std::string& url) override { visited.push_back(url); }
  void Write(const std::string& html) override { page = html; }
  void SubmitForm(int index) override {
    submitted.push_back(HtmlForms(page).at(static_cast<std::size_t>(index)));
  }
  void SetChecked(const std::map<std::string, bool>& /*marks*/) override {}
  void GoBack() override {}
  void GoForward() override {}

  std::string page;
  std::vector<std::string> visited;
  std::vector<HtmlForm> submitted;
};

class FeedbackTest : public SettingsRoomTest {
 protected:
  FeedbackTest() {
    app.gWebSiteRoot = "http://site/";
    PutRegistry("sentence", kSentence);
    PutRegistry("errcode", "AG01");
  }
  void PutRegistry(const char* key, const std::string& value) {
    ReadWriteSetFile(machine.files, app.gRegistryFile, "W", key, value);
  }
  std::string Registry(const char* key) {
    return ReadWriteSetFile(machine.files, app.gRegistryFile, "R", key, "");
  }
  void Open() {
    frmFeedback->webMain.SetRenderer(&renderer);
    frmFeedback->Show();
  }
  void Send() { machine.user.Click(frmFeedback->picButtons(1)); }
  std::string Field(const std::string& name) const {
    for (const auto& [key, value] : renderer.submitted.back().fields) {
      if (key == name) return value;
    }
    return "(none)";
  }

  RecordingRenderer renderer;
  Window<FrmFeedback> frmFeedback{[this] { return std::make_shared<FrmFeedback>(program); }};
};

TEST_F(FeedbackTest, SendsTheSentenceAndTheRemarkOnce) {
  Open();
  EXPECT_EQ(frmFeedback->lblSentence.Caption(), kSentence);
  machine.user.Focus(frmFeedback->txtDesc);
  EXPECT_EQ(frmFeedback->txtDesc.Text(), "") << "the placeholder gives way";
  machine.user.Type(frmFeedback->txtDesc, "這是對的，it's fine\n第二行");
  frmFeedback->txtEmail.Text = "hidden@example.tw";
  AnswerMessage("11");
  Send();
  EXPECT_FALSE(frmFeedback.IsLoaded());
  EXPECT_FALSE(app.gOpenFeedback);
  ASSERT_EQ(renderer.submitted.size(), 1U);
  EXPECT_EQ(renderer.submitted[0].action, "http://server/p_feedback.asp");
  EXPECT_THAT(renderer.submitted[0].fields,
              ElementsAre(Pair("key", "zorbelquinter"), Pair("pno", "4711"), Pair("errcode", "AG01"),
                          Pair("sentence", kSentence), Pair("remarks", StartsWith("這是對的，it's fine")),
                          Pair("email", "")));
  EXPECT_EQ(Registry("sentence"), "");
  EXPECT_EQ(Registry("errcode"), "");
}

TEST_F(FeedbackTest, RefusalsAreToldByNumberAndTheWindowStays) {
  const std::string hundred(100, 'x');
  const struct {
    std::string remark;
    bool wantsReply;
    const char *email, *message;
  } cases[] = {{"", false, "", "9"},
               {"   ", false, "", "9"},
               {hundred + "x", false, "", "10"},
               {"", true, "", "8"},
               {hundred, true, "a@b.c", "8"},
               {hundred, true, "@ab.cd", "8"},
               {hundred, true, " a@b.cde. ", "8"}};
  Open();
  for (const auto& each : cases) {
    frmFeedback->txtDesc.Text = each.remark;
    machine.user.Click(frmFeedback->lblNeedRes(each.wantsReply ? 1 : 0));
    EXPECT_EQ(frmFeedback->picEmail.Visible(), each.wantsReply);
    frmFeedback->txtEmail.Text = each.email;
    AnswerMessage(each.message);
    frmFeedback->OpenWithBrowserForFeedback();
    EXPECT_EQ(machine.user.Expected(), 0U) << each.remark << each.email;
  }
  EXPECT_THAT(machine.http.requests, IsEmpty());
  machine.http.RouteToNowhere("p_getconn.asp");
  frmFeedback->txtDesc.Text = hundred;
  frmFeedback->txtEmail.Text = "a@b.cd";
  AnswerMessage("1", "錯誤");
  frmFeedback->OpenWithBrowserForFeedback();
  EXPECT_THAT(renderer.submitted, IsEmpty());
  EXPECT_EQ(Registry("sentence"), kSentence);
  machine.http.Route("p_getconn.asp", "ONLINE");
  AnswerMessage("11");
  frmFeedback->OpenWithBrowserForFeedback();
  EXPECT_EQ(Field("email"), "a@b.cd");
  EXPECT_EQ(Field("remarks"), hundred);
}

TEST_F(FeedbackTest, LeavingTheRemarkEmptyStartsOver) {
  Open();
  const std::string placeholder = frmFeedback->txtDesc.Text();
  machine.user.Click(frmFeedback->lblNeedRes(1));
  machine.user.Focus(frmFeedback->txtDesc);
  machine.user.Focus(frmFeedback->txtEmail);
  EXPECT_EQ(frmFeedback->txtDesc.Text(), placeholder);
  EXPECT_TRUE(frmFeedback->optNeedRes(0).Value());
  EXPECT_FALSE(frmFeedback->picEmail.Visible());
  AnswerMessage("9");
  frmFeedback->OpenWithBrowserForFeedback();
  machine.user.Click(frmFeedback->picButtons(0));
  EXPECT_FALSE(app.gOpenFeedback);
  EXPECT_EQ(Registry("sentence"), kSentence);
}

// As a browser posts a form of a Big5 page: what the page cannot write goes as a reference.
std::string BrowserBody(const HtmlForm& form) {
  std::string body;
  for (const auto& [name, value] : form.fields) {
    body += (body.empty() ? "" : "&") + name + "=";
    for (const char sign : ToBig5(Replace(value, "’", "&#8217;"))) {
      body += fmt::format("%{:02X}", static_cast<unsigned char>(sign));
    }
  }
  return body;
}

TEST_F(FeedbackTest, ArrivesWholeAtTheRealServer) {
  const auto data = machine.home / "server";
  const std::string remark = "老師說 Tom's 是對的’100% & 沒錯\r\n許功蓋";
  {
    RealServer server(machine.loop, {"--data", data.string()});
    CurlHttp http(machine.loop);
    app.gServerUrlRoot = server.Root();
    machine.http.Route("p_getconn.asp", "ONLINE");
    Open();
    frmFeedback->txtDesc.Text = remark;
    AnswerMessage("11");
    frmFeedback->OpenWithBrowserForFeedback();
    ASSERT_EQ(renderer.submitted.size(), 1U);
    const HtmlForm& form = renderer.submitted[0];
    EXPECT_EQ(http.Send({.url = form.action, .headers = {}, .body = BrowserBody(form)}).body, "OK_");
    const auto page =
        http.Send({.method = "GET", .url = server.Root() + "m_service_mail.asp", .headers = {}, .body = ""});
    EXPECT_THAT(FromBig5(page.body), ::testing::HasSubstr("謝謝您的意見"));
  }
  std::vector<std::string> row;
  machine.realDatabases.Open(data / "server.db", Databases::Mode::kReadOnly)
      ->Run("select account, errcode, sentence, remarks, email from feedback", {}, [&](const DbRow& each) {
        for (int i = 0; i < 5; ++i) row.push_back(each.Text(i));
      });
  EXPECT_THAT(row, ElementsAre("4711", "AG01", kSentence, remark, ""));
}

}  // namespace
