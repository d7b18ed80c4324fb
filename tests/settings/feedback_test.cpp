#include "settings/feedback.h"

#include "base/cp950.h"
#include "base/database.h"
#include "core/key_value_file.h"
#include "platform/run_time_error.h"
#include "sync/feedback_post.h"
#include "tests/settings/settings_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kSentence = "It's Tom's \"pen\" & <b>book</b>.";

class FeedbackTest : public SettingsRoomTest {
 protected:
  FeedbackTest() {
    app.gWebSiteRoot = "http://site/";
    app.gConnRecords = "Data Source=" + (machine.home / "tmp/marovane/Marovane.mdb").string() + ";";
    machine.http.Route("p_feedback.asp", "");
    PutRegistry("sentence", kSentence);
    PutRegistry("errcode", "AG01");
  }
  void PutRegistry(const char* key, const std::string& value) {
    ReadWriteSetFile(machine.files, app.gRegistryFile, "W", key, value);
  }
  std::string Registry(const char* key) {
    return ReadWriteSetFile(machine.files, app.gRegistryFile, "R", key, "");
  }
  void Open() { frmFeedback->Show(); }
  void Send() { machine.user.Click(frmFeedback->picButtons(1)); }
  std::vector<std::string> Posts() const { return machine.http.Bodies("p_feedback.asp"); }
  std::vector<std::string> Waiting() const {
    return machine.realFiles.List(machine.home / "tmp/marovane/outbox");
  }

  Window<FrmFeedback> frmFeedback{[this] { return std::make_shared<FrmFeedback>(program); }};
};

TEST_F(FeedbackTest, SendsTheSentenceAndTheRemarkOnce) {
  Open();
  EXPECT_EQ(frmFeedback->lblSentence.Caption(), kSentence);
  machine.user.Focus(frmFeedback->txtDesc);
  EXPECT_EQ(frmFeedback->txtDesc.Text(), "") << "the placeholder gives way";
  machine.user.Type(frmFeedback->txtDesc, "這是對的，it's fine\né😀");
  frmFeedback->txtEmail.Text = "hidden@example.tw";
  ExpectMessage(Message::kFeedbackSent);
  Send();
  EXPECT_FALSE(frmFeedback.IsLoaded());
  EXPECT_FALSE(app.gOpenFeedback);
  EXPECT_EQ(machine.http.requests.back().url, "http://server/p_feedback.asp");
  EXPECT_THAT(
      Posts(),
      ElementsAre("key=zorbelquinter&pno=4711&errcode=AG01"
                  "&sentence=It%27s+Tom%27s+%22pen%22+%26+%3Cb%3Ebook%3C%2Fb%3E."
                  "&remarks=%B3o%ACO%B9%EF%AA%BA%A1Ait%27s+fine%0D%0A%26%23233%3B%26%23128512%3B&email="));
  EXPECT_THAT(Waiting(), IsEmpty());
  EXPECT_EQ(Registry("sentence"), "");
  EXPECT_EQ(Registry("errcode"), "");
}

TEST_F(FeedbackTest, RefusalsHaveTheirMessagesAndTheWindowStays) {
  const std::string hundred(100, 'x');
  const struct {
    std::string remark;
    bool wantsReply;
    const char* email;
    const Message& message;
  } cases[] = {{"", false, "", Message::kNoRemark},
               {"   ", false, "", Message::kNoRemark},
               {hundred + "x", false, "", Message::kRemarkTooLong},
               {"", true, "", Message::kBadEmail},
               {hundred, true, "a@b.c", Message::kBadEmail},
               {hundred, true, "@ab.cd", Message::kBadEmail},
               {hundred, true, " a@b.cde. ", Message::kBadEmail}};
  Open();
  for (const auto& [remark, wantsReply, email, message] : cases) {
    frmFeedback->txtDesc.Text = remark;
    machine.user.Click(frmFeedback->lblNeedRes(wantsReply ? 1 : 0));
    EXPECT_EQ(frmFeedback->picEmail.Visible(), wantsReply);
    frmFeedback->txtEmail.Text = email;
    ExpectMessage(message);
    Send();
  }
  EXPECT_THAT(machine.http.requests, IsEmpty());
  machine.http.RouteToNowhere("p_getconn.asp");
  frmFeedback->txtDesc.Text = hundred;
  frmFeedback->txtEmail.Text = "a@b.cd";
  ExpectMessage(Message::kNetworkDown);
  Send();
  EXPECT_THAT(Posts(), IsEmpty());
  EXPECT_EQ(Registry("sentence"), kSentence);
  machine.http.Route("p_getconn.asp", "ONLINE");
  ExpectMessage(Message::kFeedbackSent);
  Send();
  EXPECT_THAT(Posts(), ElementsAre(EndsWith("&remarks=" + hundred + "&email=a%40b.cd")));
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
  ExpectMessage(Message::kNoRemark);
  Send();
  machine.user.Click(frmFeedback->picButtons(0));
  EXPECT_FALSE(app.gOpenFeedback);
  EXPECT_EQ(Registry("sentence"), kSentence);
}

TEST_F(FeedbackTest, WhatTheServerDoesNotAcceptStaysInTheWindowAndIsNotSentForEver) {
  machine.http.Route("p_feedback.asp", "ERR_TOO_LONG");
  Open();
  frmFeedback->txtDesc.Text = "long";
  ExpectMessage(Message::kFeedbackRefused);
  Send();
  EXPECT_EQ(frmFeedback->txtDesc.Text(), "long");
  EXPECT_EQ(Registry("sentence"), kSentence);
  EXPECT_THAT(Waiting(), IsEmpty());
  const auto outbox = machine.home / "tmp/marovane/outbox";
  Put(outbox / "1.feedback", "kept before");
  SendWaitingFeedback(program);
  EXPECT_THAT(Waiting(), IsEmpty());
  EXPECT_EQ(Content(outbox / "refused/1.feedback"), "kept before");
}

TEST_F(FeedbackTest, WhatWaitsGoesOutForItsWriterAlone) {
  const auto outbox = machine.home / "tmp/marovane/outbox";
  Put(outbox / "1.feedback", "key=zorbelquinter&pno=47-11&remarks=mine");
  Put(outbox / "2.feedback", "key=zorbelquinter&pno=4712&remarks=another%27s");
  Put(outbox / "3.feedback", "key=zorbelquinter&pno=&remarks=nobody%27s");
  SendWaitingFeedback(program);
  EXPECT_THAT(Posts(), ElementsAre(EndsWith("mine"), EndsWith("nobody%27s")));
  EXPECT_THAT(Waiting(), ElementsAre("2.feedback"));
  app.gAccountNo = "4712";
  SendWaitingFeedback(program);
  EXPECT_THAT(Waiting(), IsEmpty());
}

TEST_F(FeedbackTest, WithoutALoginItWaitsUnlessThereIsNoAccount) {
  machine.http.Route("p_feedback.asp", "ERR_LOGIN");
  for (const bool hasAccount : {true, false}) {
    app.gAccountNo = hasAccount ? "4711" : "";
    PutRegistry("sentence", kSentence);
    Open();
    frmFeedback->txtDesc.Text = "right";
    ExpectMessage(hasAccount ? Message::kNetworkDown : Message::kFeedbackRefused, kOk,
                  hasAccount ? "\r\n您的意見已經保存" : "");
    if (hasAccount) ExpectMessage(Message::kPasswordNeeded);
    Send();
    EXPECT_EQ(machine.user.Expected(), 0U);
    EXPECT_THAT(Waiting(), SizeIs(1));
  }
}

base::HttpResponse Lost(const base::HttpRequest& request) {
  throw RunTimeError(request.url + ": lost on the way");
}

TEST_F(FeedbackTest, WhatDoesNotArriveIsReportedAndWaits) {
  machine.http.Route("p_feedback.asp", Lost);
  machine.http.Queue("p_feedback.asp", "<html>", 502);
  machine.http.Queue("p_feedback.asp", "ERR_SERVER");
  for (int i = 0; i < 3; ++i) {
    PutRegistry("sentence", kSentence);
    Open();
    frmFeedback->txtDesc.Text = "這是對的";
    ExpectMessage(Message::kNetworkDown, kOk, "\r\n您的意見已經保存");
    Send();
    EXPECT_FALSE(frmFeedback.IsLoaded());
    EXPECT_EQ(Registry("sentence"), "");
  }
  EXPECT_THAT(Waiting(), SizeIs(3));
  const auto posts = Posts();
  machine.http.requests.clear();
  machine.http.Route("p_feedback.asp", "OK_");
  machine.http.Queue("p_feedback.asp", Lost);
  SendWaitingFeedback(program);
  EXPECT_EQ(Posts(), posts) << "as they were, the oldest first";
  EXPECT_THAT(Waiting(), SizeIs(1)) << "the one that was lost again";
  SendWaitingFeedback(program);
  EXPECT_THAT(Waiting(), IsEmpty());
}

TEST_F(FeedbackTest, WhatCanNeitherBeSentNorKeptStaysInTheWindow) {
  machine.http.Route("p_feedback.asp", Lost);
  Put(machine.home / "tmp/marovane/outbox", "no folder");
  Open();
  frmFeedback->txtDesc.Text = "這是對的";
  EXPECT_THROW(frmFeedback->OpenWithBrowserForFeedback(), RunTimeError);
  EXPECT_EQ(frmFeedback->txtDesc.Text(), "這是對的");
  EXPECT_EQ(Registry("sentence"), kSentence);
}

TEST_F(FeedbackTest, ArrivesWholeAtTheRealServer) {
  const auto data = machine.home / "server";
  const std::string remark = "老師說 Tom's 是對的’100% & 沒錯\r\n許功蓋";
  {
    RealServer server(machine.loop, {"--data", data.string()});
    app.gServerUrlRoot = server.Root();
    machine.http.RouteThrough(curl, {"p_feedback.asp"});
    Open();
    frmFeedback->txtDesc.Text = remark;
    ExpectMessage(Message::kFeedbackSent);
    Send();
    const auto page =
        curl.Send({.method = "GET", .url = server.Root() + "m_service_mail.asp", .headers = {}, .body = ""});
    EXPECT_THAT(base::FromCp950(page.body), HasSubstr("謝謝您的意見"));
  }
  std::vector<std::string> row;
  machine.realDatabases.Open(data / "server.db", base::Databases::Mode::kReadOnly)
      ->Run("select account, errcode, sentence, remarks, email from feedback", {},
            [&](const base::DbRow& each) { row = each.Texts(); });
  EXPECT_THAT(row, ElementsAre("4711", "AG01", kSentence, remark, ""));
}

}  // namespace

}  // namespace marovane
