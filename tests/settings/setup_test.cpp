#include "settings/setup.h"

#include "tests/settings/settings_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

class SetupTest : public SettingsRoomTest {
 protected:
  SetupTest() {
    machine.http.Route("p_getusersettings.asp", "OK_");
    app.gFontSizeName = "MIDDLE";
    app.gAutoCleanHistory = app.gAutoKeyinPw = "1";
    app.gAlwaysOnTop = app.gFeedbackErrData = "0";
    app.gAccountPassword = "secret";
  }
  void Open() { frmSetup->Show(); }
  void Save() { machine.user.Click(frmSetup->picButtons_1); }

  Window<FrmSetup> frmSetup{[this] { return std::make_shared<FrmSetup>(program); }};
};

TEST_F(SetupTest, ShowsTheSettingsAndSavesWhatWasChosen) {
  app.gEduBackground = "u2";
  Open();
  EXPECT_TRUE(frmSetup->optFontSize(1).Value());
  EXPECT_EQ(frmSetup->cboHighestDegree.Text(), "大專");
  EXPECT_TRUE(frmSetup->optHighestDegree(1).Value());
  EXPECT_EQ(frmSetup->sdrTransform.Value(), 200);
  machine.user.Click(frmSetup->lblFontSize(0));
  machine.user.Click(frmSetup->lblAutoCleanRec);
  machine.user.Click(frmSetup->chkAlwaysOnTop);
  machine.user.Click(frmSetup->lblFeedbackErrData);
  machine.user.Choose(frmSetup->cboHighestDegree, 5);
  machine.user.Click(frmSetup->lblHighestDegree(0));
  frmSetup->sdrTransform.Value = 130;
  Save();
  EXPECT_FALSE(frmSetup.IsLoaded() || app.gOpenSetup || app.gMainReload);
  EXPECT_EQ(frmMain.loads, 1);
  EXPECT_EQ(frmMain.txtInput.FontSize(), 15);
  EXPECT_EQ(app.gInputFontSize, 15);
  EXPECT_EQ(app.gTransformValue, 130);
  std::string saved;
  for (const char* key : {"FontSize", "autoCleanHistory", "autoKeyinPw", "alwaysOnTop", "transformValue",
                          "feedbackErrData", "eduBackground"}) {
    saved += Setup(key) + " ";
  }
  EXPECT_EQ(saved, "BIG 0 1 1 130 1 g1 ");
  EXPECT_THAT(
      machine.http.Bodies("p_getusersettings.asp"),
      ElementsAre(EndsWith("&met=w&setting=alwaysOnTop:1$autoCleanHistory:0$autoKeyinPw:1$eduBackground:g1$"
                           "feedbackErrData:1$FontSize:BIG$Pno:4711$transformValue:130$userPW:secret")));
}

TEST_F(SetupTest, EducationIsStoredInTwoSignsAndReadBack) {
  const struct {
    int level;
    bool isStudying;
    const char* stored;
    int readState;
  } cases[] = {{1, true, "p1", 0}, {2, false, "j2", 1}, {3, true, "s1", 0}, {4, false, "u2", 1},
               {5, true, "g1", 0}, {0, true, "1", 1},   {0, false, "2", 1}};
  for (const auto& [level, isStudying, stored, readState] : cases) {
    EXPECT_EQ(EduBackground(level, isStudying), stored);
    app.gEduBackground = stored;
    Open();
    EXPECT_EQ(frmSetup->cboHighestDegree.ListIndex(), level) << stored;
    EXPECT_EQ(SelectedOption(frmSetup->optHighestDegree), readState) << stored;
    frmSetup.Unload();
  }
}

TEST_F(SetupTest, MistakesAreNotUploadedWithoutALevelOfEducation) {
  Open();
  machine.user.Click(frmSetup->chkFeedbackErrData);
  frmSetup->sdrTransform.Value = 150;
  ExpectMessage(Message::kChooseEducation);
  Save();
  EXPECT_TRUE(frmSetup.IsLoaded());
  EXPECT_EQ(Content(app.gSetupFile), std::nullopt);
  EXPECT_THAT(machine.http.requests, IsEmpty());
  EXPECT_EQ(frmMain.Alpha(), 150) << "the preview stays until the window is closed";
}

TEST_F(SetupTest, SliderActsOnOpenWindowsUntilItIsSavedOrClosed) {
  app.gOpenDiary = true;
  Open();
  EXPECT_EQ(frmMain.Alpha(), 255) << "filling the controls moves nothing";
  frmSetup->sdrTransform.Value = 110;
  EXPECT_EQ(fakes.frmDiary.Alpha(), 110);
  EXPECT_EQ(frmMain.Alpha(), 110);
  EXPECT_EQ(fakes.frmFeedback.Alpha(), 255);
  machine.user.Click(frmSetup->picButtons_0);
  EXPECT_EQ(fakes.frmDiary.Alpha(), 200);
  EXPECT_EQ(frmMain.Alpha(), 200);
  EXPECT_FALSE(app.gOpenSetup);
  machine.loop.WaitUntil([this] { return !frmSetup.IsLoaded(); });
  EXPECT_EQ(app.gTransformValue, 200);
}

TEST_F(SetupTest, MergeWantsAnAccountAndNoCampus) {
  app.gAccountNo.clear();
  Open();
  EXPECT_TRUE(frmSetup->lblSysnDisable.Visible());
  EXPECT_FALSE(frmSetup->picButtons_3.Visible());
  frmSetup.Unload();
  app.gAccountNo = "4711";
  app.gEdition = "XQD";
  Open();
  EXPECT_FALSE(frmSetup->picButtons_3.Visible());
  EXPECT_EQ(frmSetup->lblSpecMessage_1.Caption(), "雲端版自動同步不需設定");
}

TEST_F(SetupTest, MergeRunsASynchronisationOnceTheOldAccountIsProven) {
  FakeWindow syncLogin(machine.machine, "frmSyncLogin");
  FakeHall::Lead(program.hall.frmSyncLogin, syncLogin);
  Open();
  for (const char* answer : {"CANCEL", "OK"}) {
    ExpectMessage(Message::kMergeOldAccount);
    machine.user.OnModal([&](Form& form) {
      EXPECT_EQ(&form, &syncLogin);
      EXPECT_LT(frmSetup->Left(), -10000);
      app.gMsgResult = answer;
      form.Hide();
    });
    machine.user.Click(frmSetup->picButtons_3);
    EXPECT_THAT(fakes.frmUpload.modes, SizeIs(answer == std::string("OK") ? 1 : 0));
    EXPECT_GT(frmSetup->Left(), -10000);
    EXPECT_EQ(machine.windows.Active(), &*frmSetup);
  }
  ExpectMessage(Message::kMergeOldAccount, kCancel);
  machine.user.Click(frmSetup->picButtons_3);
  EXPECT_THAT(fakes.frmUpload.modes, SizeIs(1));
}

}  // namespace

}  // namespace marovane
