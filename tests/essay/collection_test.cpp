// The essays of one topic: listed, handed in, written out, deleted.
#include "core/settings.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kHandIn = "p_set_essay_work_finalset.asp";

using CollectionTest = EssayTest;
using SchoolCollection = SchoolTest;

TEST_F(CollectionTest, ListsEssaysWithWhatCanBeDone) {
  Put({"e1", "open", "First", "N", 4, 3});
  Put({"e2", "open", "Tom’s", "A", 5});
  Put({"e3", "open", "Last", "N", 5});
  Put({"e4", "open", "Gone", "N", 5, 0, "D"});
  Put({"e5", "done", "Sent", "Y", 5});
  Put({"e6", "done", "Spare", "N", 4});
  const struct {
    const char *edition, *mode, *workId, *rows, *commands;
  } kCases[] = {
      {"XQD", "Y", "open",
       "\nLast 2026/11/5 0 正常 交卷?\nTom's 2026/11/5 0 中斷 ---\nFirst 2026/11/4 3 正常 交卷?\n",
       "show:e3 snd:e3@open show:e2 show:e1 snd:e1@open"},
      {"XQD", "Y", "done", "\nSent 2026/11/5 0 正常 已交卷 查看老師批閱\nSpare 2026/11/4 0 正常 ---\n",
       "show:e5 res:done show:e6"},
      {"XQD", "N", "open", "\nLast 2026/11/5 0 正常\nTom's 2026/11/5 0 中斷\nFirst 2026/11/4 3 正常\n",
       "show:e3 show:e2 show:e1"},
      {"MRV", "Y", "done", "\nSent 2026/11/5 0 正常\nSpare 2026/11/4 0 正常\n", "show:e5 show:e6"},
      {"XQD", "Y", "",
       "\nSent 2026/11/5 0 正常\nLast 2026/11/5 0 正常\nTom's 2026/11/5 0 中斷\nSpare 2026/11/4 0 正常\n"
       "First 2026/11/4 3 正常\n",
       "show:e5 show:e3 show:e2 show:e6 show:e1"},
      {"XQD", "Y", "none", "\n", ""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(std::string(c.edition) + " " + c.mode + " " + c.workId);
    app.gEdition = c.edition;
    const auto& page = OpenCollection(c.workId, c.mode).webHtml;
    EXPECT_EQ(RowsOf(page), c.rows);
    EXPECT_EQ(CommandsOf(page), c.commands);
  }
}

TEST_F(SchoolCollection, HandsInTheChosenEssay) {
  Put({"e1", "w1", "A", "N", 5, 0, "N"});
  machine.http.Queue(kHandIn, "ERR_SERVER");
  machine.http.Route(kHandIn, "OK_");
  OpenTopics();
  OpenCollection("w1", "Y");
  ExpectMessage(Message::kHandInThis, kCancel);
  room.frmEssayCollect->webHtml.FollowLink("cmd:snd:e1@w1");
  EXPECT_THAT(machine.http.Bodies(kHandIn), IsEmpty());
  WriteSetup(composition.program, "NeedSync", "Y");
  ExpectMessage(Message::kHandInThis);
  ExpectMessage(Message::kHandedIn);
  Assign("OK_w1#Y#d#A#");
  EXPECT_FALSE(room.frmEssayCollect->webHtml.FollowLink("cmd:snd:e1@w1"));
  EXPECT_EQ(machine.user.Expected(), 0U);
  const char* const handIn = "key=zorbelquinter&pno=1234567890&essayId=e1&workId=w1";
  EXPECT_THAT(machine.http.Bodies(kHandIn), ElementsAre(handIn, handIn));
  EXPECT_THAT(upload.modes, ElementsAre("UPLOAD"));
  EXPECT_EQ(app.gUploadAccountNo, app.gAccountNo);
  EXPECT_EQ(ReadSetup(composition.program, "NeedSync"), "N");
  EXPECT_EQ(FinalSet("e1"), "Y");
  EXPECT_FALSE(app.gOpenEssayCollect);
  EXPECT_FALSE(room.frmEssayInputEdu->mHasOpenWork) << "the list is built anew";
  EXPECT_THAT(CommandsOf(room.frmEssayInputEdu->webHtml), StartsWith("res:w1"));
}

TEST_F(SchoolCollection, HandingInIsGivenUpAtTheEleventhRefusal) {
  Put({"e1", "w1"});
  OpenCollection("w1", "Y");
  const struct {
    int refusals;
    const Message& message;
    const char* finalSet;
  } kCases[] = {{11, Message::kNotHandedIn, "N"}, {10, Message::kHandedIn, "Y"}};
  for (const auto& c : kCases) {
    const auto before = machine.http.Bodies(kHandIn).size();
    const auto start = machine.loop.Elapsed();
    for (int i = 0; i < c.refusals; ++i) machine.http.Queue(kHandIn, "ERR_NO_ESSAY");
    machine.http.Route(kHandIn, "OK_");
    ExpectMessage(Message::kHandInThis);
    ExpectMessage(c.message);
    OpenCollection("w1", "Y").webHtml.FollowLink("cmd:snd:e1@w1");
    EXPECT_EQ(machine.http.Bodies(kHandIn).size() - before, 11U);
    EXPECT_GE((machine.loop.Elapsed() - start).count(), 30'000);
    EXPECT_EQ(FinalSet("e1"), c.finalSet);
    EXPECT_TRUE(app.gOpenEssayInputEdu);
  }
  EXPECT_THAT(upload.modes, IsEmpty()) << "the server knows all there is";
}

TEST_F(SchoolCollection, HandingInThatIsBrokenOffIsToldAsNotDone) {
  Put({"e1", "w1"});
  machine.http.breaksOff = [](const base::HttpRequest& request) { return request.url.ends_with(kHandIn); };
  ExpectMessage(Message::kHandInThis);
  ExpectMessage(Message::kNotHandedIn);
  OpenCollection("w1", "Y").webHtml.FollowLink("cmd:snd:e1@w1");
  EXPECT_EQ(machine.user.Expected(), 0U);
  EXPECT_EQ(FinalSet("e1"), "N");
}

TEST_F(CollectionTest, ButtonsSayWhatIsMissing) {
  Put({"e1", "w1"});
  Put({"e2", "w1"});
  const struct {
    const char* workId;
    std::vector<int> rows;
    int button;
    const Message& message;
  } kCases[] = {{"none", {}, 0, Message::kNoEssays},
                {"w1", {}, 0, Message::kChooseEssays},
                {"w1", {}, 2, Message::kChooseEssays},
                {"w1", {1, 2}, 2, Message::kOneRowAtATime}};
  for (const auto& c : kCases) {
    auto& window = OpenCollection(c.workId, "N");
    Tick(c.rows);
    ExpectMessage(c.message);
    machine.user.Click(window.picButtons(c.button));
    EXPECT_EQ(machine.user.Expected(), 0U) << c.message.number;
  }
  machine.user.Click(room.frmEssayCollect->picSelectAll(0));
  EXPECT_EQ(room.frmEssayCollect->GetCheckCounts(), 2);
  machine.user.Click(room.frmEssayCollect->lblSelectAll(1));
  EXPECT_EQ(room.frmEssayCollect->GetCheckCounts(), 0);
}

TEST_F(CollectionTest, AnEssayThatWasHandedInResistsDeletion) {
  Put({"e1", "w1", "A", "Y", 4, 1});
  Put({"e2", "w1", "A", "N", 5, 1});
  Put({"e3", "w1", "A", "A", 6, 1});
  const struct {
    std::vector<int> rows;  // the newest first
    const Message& message;
    const char* deleted;
  } kCases[] = {{{1}, Message::kDeleted, "e3"},
                {{1, 2}, Message::kSomeNotDeleted, "e2 e3"},
                {{1}, Message::kSomeNotDeleted, "e2 e3"}};
  for (const auto& c : kCases) {
    auto& window = OpenCollection("w1", "N");
    Tick(c.rows);
    ExpectMessage(Message::kDeleteEssays, kCancel);
    machine.user.Click(window.picButtons(1));
    ExpectMessage(Message::kDeleteEssays);
    machine.user.Click(window.picButtons(1));
    EXPECT_EQ(EssaysWith("D"), c.deleted);
    ExpectMessage(c.message);
    machine.loop.WaitUntil([this] { return machine.user.Expected() == 0; });
    EXPECT_EQ(ReadSetup(composition.program, "NeedSync"), "Y");
  }
  EXPECT_THAT(Texts("select essayId from errsentence where upload <> 'D'"), ElementsAre("e1"));
  EXPECT_EQ(CommandsOf(room.frmEssayCollect->webHtml), "show:e1");
  room.frmEssayCollect->imgClose_Click();
  machine.loop.WaitUntil([this] { return !app.gOpenEssayCollect; });
  EXPECT_THAT(upload.modes, ElementsAre("UPLOAD"));
  EXPECT_EQ(ReadSetup(composition.program, "NeedSync"), "N");
  OpenCollection("w1", "N").imgClose_Click();
  machine.loop.WaitUntil([this] { return !app.gOpenEssayCollect; });
  EXPECT_THAT(upload.modes, SizeIs(1)) << "nothing waits any more";
}

TEST_F(CollectionTest, WritesAndChecksWholeEssays) {
  Put({"e1", "w1", "A", "N", 4, 0, "Y", "Tom’s birds\r\nfly."});
  Put({"e2", "w1", "A", "N", 5, 0, "Y", "Run!"});
  auto& window = OpenCollection("w1", "N");
  EXPECT_THAT(window.webHtml.Page(), HasSubstr("id='rec2' value='Tom&#39;s'>\r\n"));
  Tick({1, 2});
  const std::string file = (machine.home / "out.txt").string();
  machine.user.Click(window.picButtons(0));  // the learner names no file
  machine.desktop.saveAnswer = file;
  ExpectMessage(Message::kExported);
  machine.user.Click(window.picButtons(0));
  EXPECT_EQ(machine.realFiles.Read(file), "Run!\r\n\r\nTom's birds\r\nfly.\r\n\r\n\r\n");
  ExpectMessage(Message::kOverwriteFile, kNo);
  machine.user.Click(window.picButtons(0));
  EXPECT_EQ(machine.user.Expected(), 0U);

  window.webHtml.inputChecked["chk1"] = false;
  app.gAccountPassword = "secret";
  machine.user.Click(window.picButtons(2));
  EXPECT_THAT(Asked(), ElementsAre("Tom's birds fly."));
  EXPECT_EQ(window.GetCheckCounts(), 0);
}

TEST_F(SchoolCollection, ReportsAndCommentsOpenFromIt) {
  Put({"e1", "w1", "A", "Y"});
  auto& window = OpenCollection("w1", "Y");
  EXPECT_FALSE(window.webHtml.FollowLink("cmd:res:w1"));
  EXPECT_THAT(composition.frmBrowser->webOther.LocationURL(), EndsWith("&workId=w1"));
  for (const char* nothing : {"cmd:", "cmd:snd:e1", "cmd:del:e1|"}) {
    EXPECT_FALSE(window.webHtml.FollowLink(nothing)) << nothing;
  }
  EXPECT_FALSE(window.webHtml.FollowLink("cmd:show:e1"));
  EXPECT_TRUE(Window().mViewOnly && app.gEssayNoListReturn);
  EXPECT_EQ(FinalSet("e1"), "Y");
}

}  // namespace

}  // namespace marovane
