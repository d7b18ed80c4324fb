#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using ::testing::ElementsAre;

class CompositionTest : public EssayTest {};

TEST_F(CompositionTest, PutsTheRightWindowBehindEachDoor) {
  machine.http.Route("p_getwebhelper.asp", "");
  Composition whole(machine.machine, InstallationValues{});
  whole.program.app = app;
  whole.program.app.gAccountNo.clear();  // so that the splash uploads nothing
  std::vector<std::string> names;
  const auto note = [&](const auto&... doors) { (names.push_back(doors->AsForm().Name()), ...); };
  const Hall& hall = whole.program.hall;
  note(hall.frmMain, hall.frmSplash, hall.frmMenu, hall.frmBrowser, hall.frmSuggest, hall.frmCollocation,
       hall.frmSentences, hall.frmErrList, hall.frmErrSentence, hall.frmEssay, hall.frmDiary,
       hall.frmEssayInputEdu, hall.frmEssayInputForm, hall.frmEssayCollect, hall.frmFeedback, hall.frmSetup,
       hall.frmPassword, hall.frmBindSelect, hall.frmXQDLogin, hall.frmSyncLogin, hall.frmDebug);
  EXPECT_THAT(names, ElementsAre("frmMain", "frmSplash", "frmMenu", "frmBrowser", "frmSuggest",
                                 "frmCollocation", "frmSentences", "frmErrList", "frmErrSentence", "frmEssay",
                                 "frmDiary", "frmEssayInputEdu", "frmEssayInputForm", "frmEssayCollect",
                                 "frmFeedback", "frmSetup", "frmPassword", "frmBindSelect", "frmXQDLogin",
                                 "frmSyncLogin", "frmDebug"));
  EXPECT_EQ(&*hall.frmUpload, &*whole.frmUpload);
}

}  // namespace

}  // namespace marovane
