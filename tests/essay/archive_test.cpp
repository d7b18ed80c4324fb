#include "essay/archive.h"

#include "base/digest.h"
#include "essay/comparison.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

using ArchiveTest = EssayTest;

TEST_F(ArchiveTest, FilesAPageUnderDigests) {
  const std::string checksum = SendServerHtm(composition.program, "<p>一 & two</p></textarea>", "He  goes.");
  EXPECT_EQ(checksum, base::SlotMd5("Hegoes."));
  EXPECT_EQ(checksum, ArchiveChecksum("He goes ."));
  EXPECT_EQ(ArchiveChecksum("He don’t."), ArchiveChecksum("He don't."))
      << "reports know one kind of apostrophe";
  EXPECT_THAT(
      machine.http.Bodies("p_all_engine_htm_rec.asp"),
      ElementsAre("key=zorbelquinter&enginever=&pnomd5=" + base::SlotMd5("1234567890") +
                  "&checksum=" + checksum + "&filestr=%3Cp%3E%E4%B8%80+%26+two%3C%2Fp%3E%3C%2Ftextarea%3E"));
  // A failed post goes unnoticed.
  machine.http.RouteToNowhere("p_all_engine_htm_rec.asp");
  EXPECT_EQ(SendServerHtm(composition.program, "<p></p>", "Hi."), base::SlotMd5("Hi."));
}

TEST_F(ArchiveTest, ShowsTheOriginalBesideTheReport) {
  FrmEssayCompare& window = *room.frmEssayCompare;
  window.ShowHtml("First.\r\nSecond '<b>.");
  EXPECT_THAT(window.webHtml.Page(), HasSubstr("line-height:150%;'>First.<br>Second &#39;&lt;b&gt;.</td>"));
  window.ShowHtml("Other.");
  EXPECT_THAT(window.webHtml.Page(), AllOf(HasSubstr("Other."), Not(HasSubstr("First."))));
  EXPECT_FALSE(window.webHtml.FollowLink("cmd:show: abc "));
  EXPECT_EQ(composition.frmBrowser->webOther.LocationURL(),
            "http://school/p_all_engine_htm_show.asp?key=zorbelquinter&pnomd5=" +
                base::SlotMd5("1234567890") + "&checksum=abc&enginever=");
  EXPECT_FALSE(window.webHtml.FollowLink("cmd:other:"));
  EXPECT_TRUE(window.webHtml.FollowLink("about:blank"));
  machine.user.Click(window.imgClose);
  machine.loop.WaitUntil([this] { return !room.frmEssayCompare.IsLoaded(); });
}

}  // namespace

}  // namespace marovane
