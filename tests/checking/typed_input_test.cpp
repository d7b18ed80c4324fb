// What learners type and paste: typographic signs, other languages, whole paragraphs.
#include "base/text.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kCheckPage = "p_passWebEngine.asp";
constexpr const char* kTranslatePage = "p_com_translate.asp";

class TypedInputTest : public CheckingTest {
 protected:
  std::string Sent() const {
    const std::string body = machine.http.Bodies(kCheckPage).back();
    return base::Replace(body.substr(body.find("&s=") + 3), "%20", " ");
  }
};

TEST_F(TypedInputTest, EngineGetsPlainSignsAndTheRecordsWhatWasWritten) {
  const struct {
    const char *typed, *sent, *reply, *recorded;
  } cases[] = {
      {"I don’t like it.", "I don't like it.", "OK_0##p.htm", "ok|N|I don’t like it."},
      {"“Ｗｈｙ？” she asked…", "\"Why?\" she asked...", "OK_0##p.htm", "ok|N|“Ｗｈｙ？” she asked…"},
      {"He go to\u00A0the ca\u00ADfé.\r\n", "He go to the cafe.", "OK_1#AG01#p.htm#He *go* to the cafe.",
       "err|He *go* to the café.|AG01"},
      {"It are 30° and ½ €5.", "It are 30 degrees and 1/2 $5.",
       "OK_2#AG01#p.htm#It *are* 30 degrees and 1/2 $5.", "err|It *are* 30° and ½ €5.|AG01"},
      {"He goes.", "He goes.", "OK_0##p.htm", "ok|N|He goes."},
  };
  for (const bool isLocal : {false, true}) {
    app.gUseWebEngine = true;
    for (const auto& [typed, sent, reply, recorded] : cases) {
      SCOPED_TRACE(typed);
      machine.http.Route(kCheckPage, reply);
      Execute("delete from oksentence; delete from errsentence; delete from mistakes");
      if (isLocal) {
        const auto fields = base::Split(std::string(reply).substr(3), "#");
        UseLocalEngine(Engine({{"findMistake", fields[0]},
                               {"errcode", fields[1]},
                               {"sentence", fields.size() > 3 ? fields[3] : sent}}));
        machine.http.Route("p_decode.asp", "");
      }
      Enter(typed);
      EXPECT_TRUE(isLocal || Sent() == sent) << Sent();
      EXPECT_THAT(Recorded().front(), HasSubstr(recorded));
      ExpectIdle(typed);
    }
  }
}

TEST_F(TypedInputTest, WhatNoEngineTakesIsNamedAndStays) {
  const struct {
    std::string typed;
    const Message& message;
    const char* reason;
  } cases[] = {{"He said {ok}~ ♥ {.", Message::kBadSigns, "請檢查「{」「}」「~」「♥」"},
               {std::string(1999, 'a') + "..", Message::kSentenceTooLong, "2000"},
               {std::string(1990, 'a') + "…………", Message::kSentenceTooLong, "2000"}};
  for (const auto& [typed, message, reason] : cases) {
    Main().lastAnswer.errcode = "of the sentence before";
    ExpectMessage(message);
    Enter(typed);
    EXPECT_THAT(Main().stopReason, HasSubstr(reason));
    EXPECT_EQ(Main().lastAnswer, protocol::CheckReply{}) << "nothing stale";
    EXPECT_THAT(machine.http.requests, IsEmpty());
    ExpectIdle(typed);
  }
  Enter("He goes.");
  EXPECT_EQ(Main().stopReason, "");
}

TEST_F(TypedInputTest, EnglishTakesThePlaceOfEachChineseStretchOrOfNone) {
  const std::pair<const char*, const char*> words[] = {{"蘋果", "an apple; Apple (a company)"},
                                                       {"3個香蕉", "3 bananas"}};
  machine.http.Route(kTranslatePage, [&](const base::HttpRequest& request) {
    for (const auto& [chinese, english] : words) {
      if (request.body.ends_with(std::string("&q=") + chinese)) {
        return base::HttpResponse{200, "", std::string("OK#") + english, request.url};
      }
    }
    return base::HttpResponse{200, "", "ERR_NOTFOUND", request.url};
  });
  const struct {
    const char *typed, *result;
  } cases[] = {{"I ate 蘋果 yesterday.", "I ate an apple yesterday."},
               {"I ate蘋果yesterday.", "I ate an apple yesterday."},
               {"I ate 蘋果, then he ate 3個香蕉.", "I ate an apple, then he ate 3 bananas."},
               {"3個香蕉", "3 bananas"},
               {"I ate 蘋果 and 鳳梨.", nullptr}};
  for (const auto& [typed, result] : cases) {
    if (result == nullptr) ExpectMessage(Message::kNoTranslation);
    Enter(typed);
    ExpectIdle(result == nullptr ? typed : result);
  }
  EXPECT_THAT(machine.http.Bodies(kCheckPage), IsEmpty());
}

TEST_F(TypedInputTest, ParagraphIsOfferedAsAnEssay) {
  const std::string text = "I went home late. My mother was angry. She cried.";
  ExpectMessage(Message::kSeveralSentences, kYes);
  Enter(text);
  EXPECT_THAT(fakes.frmEssay.started, ElementsAre(text));
  EXPECT_THAT(machine.http.requests, IsEmpty());

  app.gOpenEssay = true;  // with a text that must not be lost
  ExpectMessage(Message::kSeveralSentences, kYes);
  ExpectMessage(Message::kNewEssay, kCancel);
  Enter(text);
  EXPECT_THAT(fakes.frmEssay.started, SizeIs(1));
  ExpectIdle(text);

  ExpectMessage(Message::kSeveralSentences, kNo);
  Enter(text);
  EXPECT_EQ(Sent(), text) << "the learner wants it judged as it is";
  ExpectIdle(text);
}

TEST_F(TypedInputTest, FirstChangeAfterAVerdictBringsTheNeutralColourBack) {
  for (const bool clears : {false, true}) {
    Enter("He goes.");
    auto& box = Main().txtInput;
    EXPECT_EQ(box.SelColor(), kGreen);
    EXPECT_EQ(box.Description(), "句子正確") << "for those who see no colour";
    EXPECT_EQ(Main().txtFocus.Description(), "句子正確") << "the focus is there";
    box.SelStart = 3;
    EXPECT_EQ(box.SelColor(), kGreen) << "a caret that moves changes nothing";
    if (clears) {
      machine.user.Click(Main().imgMenu(9));
    } else {
      machine.user.Type(box, "n");
      EXPECT_EQ(box.SelStart(), 4) << "the caret stays where it was";
    }
    EXPECT_EQ(box.SelColor(), Rgb(255, 204, 0)) << clears;
    EXPECT_EQ(box.Description() + Main().txtFocus.Description(), "");
  }
}

TEST_F(TypedInputTest, RefusalThatWillNotChangeEndsTheCheckAtOnce) {
  machine.http.Route(kCheckPage, "ERR_INVAILD_ACCOUNT");
  ExpectMessage(Message::kRefusedByEngine);
  Enter("He goes.");
  EXPECT_THAT(machine.http.Bodies(kCheckPage), SizeIs(1));
  EXPECT_EQ(app.gVerdict, "STOP");
  EXPECT_THAT(Main().stopReason, EndsWith("ERR_INVAILD_ACCOUNT"));
  ExpectIdle("He goes.");
}

}  // namespace

}  // namespace marovane
