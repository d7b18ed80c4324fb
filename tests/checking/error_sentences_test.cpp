#include "checking/error_sentences.h"

#include "base/day.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

const std::string kMark = "<span style='background-color: #FFFFFF'>";

TEST(SentenceStyle, PartsBetweenStarsStandOut) {
  const std::pair<const char*, std::string> cases[] = {
      {"*a* b *c*", kMark + "a</span> b " + kMark + "c</span>"},
      {"no mark", "no mark"},
      {"an *odd number", "an " + kMark + "odd number</span>"},
      {"他*去*。", "他" + kMark + "去</span>。"},
      {"", ""},
      {"a *<b> & '*", "a " + kMark + "&lt;b&gt; &amp; &#39;</span>"},
  };
  for (const auto& [sentence, inner] : cases) {
    EXPECT_EQ(GetSentenceStyle(sentence).Markup(),
              "<p style='margin-top:0px;margin-bottom:0px;'>" + inner + "</p>");
  }
}

class ErrSentencesTest : public CheckingTest {
 protected:
  Window<FrmErrSentence> frmErrSentence_{
      [this] { return std::make_shared<FrmErrSentence>(program, records); }};
};

TEST_F(ErrSentencesTest, PageHoldsTheSentencesOfOneCode) {
  const auto day = base::DayOf(machine.loop.Now());
  records.InsertErrSentence({.id = "1", .sentence = "He *don't*.", .errcode = "A1", .sDate = day});
  records.InsertErrSentence({.id = "2", .sentence = "other", .errcode = "B1", .sDate = day});
  records.InsertErrSentence({.id = "3", .sentence = "gone", .errcode = "A1", .sDate = day, .upload = "D"});
  records.InsertErrSentence({.id = "4", .sentence = " *a* b ", .errcode = "A1", .sDate = day});
  FrmErrSentence& window = *frmErrSentence_;
  EXPECT_TRUE(app.gOpenErrSentence);
  const std::pair<const char*, std::string> cases[] = {
      {"A1", GetSentenceStyle("He *don’t*.").Markup() + GetSentenceStyle("*a* b").Markup()}, {"Z9", ""}};
  for (const auto& [errcode, sentences] : cases) {
    window.ShowErrSentence(errcode);
    EXPECT_THAT(window.webMain.Page(),
                AllOf(StartsWith("<html>\r\n"),
                      EndsWith("'>\r\n<p><font face='Arial' size='4' style='line-height:150%;'>" + sentences +
                               "</font></p></body>\r\n</html>\r\n")));
  }
}

TEST_F(ErrSentencesTest, SizeHasItsBoundsAndClosingFadesOut) {
  FrmErrSentence& window = *frmErrSentence_;
  window.Show();
  window.Width = 6000;
  window.Height = 20000;
  window.Form_Resize();
  EXPECT_EQ(window.Height(), 650 * 15);
  EXPECT_GT(window.webMain.Height(), 0);
  machine.loop.WaitUntil([&] { return window.Alpha() == 240; });
  machine.user.Click(window.imgClose);
  EXPECT_TRUE(!app.gOpenErrSentence && frmErrSentence_.IsLoaded());
  machine.loop.WaitUntil([this] { return !frmErrSentence_.IsLoaded(); });
}

}  // namespace

}  // namespace marovane
