#include "core/settings.h"

#include "base/cp950.h"
#include "base/text.h"
#include "core/key_value_file.h"
#include "platform/run_time_error.h"
#include "protocol/form.h"
#include "protocol/lists.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kSettingsPage = "p_getusersettings.asp";

class SettingsTest : public CoreTest {
 protected:
  SettingsTest() {
    machine.http.RouteToNowhere("p_getconn.asp");
    machine.http.Route(kSettingsPage, "ERR_NOTFOUND");
  }
  void GoOnline() { machine.http.Route("p_getconn.asp", "ONLINE#2026/11/5"); }
  void PutMirror(const std::string& text) { Put(machine.home / "config" / "marovane" / "account.set", text); }
  std::string SetupText() { return Content(app.gSetupFile).value_or(""); }
};

TEST_F(SettingsTest, EveryKeyIsRepairedInItsOwnWay) {
  const struct {
    const char* key;
    std::string stored;
    std::string AppState::*field;
    std::string used, kept;
  } cases[] = {
      {"FontSize", "BIG", &AppState::gFontSizeName, "BIG", "BIG"},
      {"FontSize", "SMALL", &AppState::gFontSizeName, "SMALL", "SMALL"},
      {"FontSize", "big", &AppState::gFontSizeName, "MIDDLE", "MIDDLE"},
      {"FontSize", "", &AppState::gFontSizeName, "MIDDLE", "MIDDLE"},
      {"autoCleanHistory", "0", &AppState::gAutoCleanHistory, "0", "0"},
      {"autoCleanHistory", "yes", &AppState::gAutoCleanHistory, "1", "0"},
      {"autoKeyinPw", "", &AppState::gAutoKeyinPw, "1", "0"},
      {"alwaysOnTop", "1", &AppState::gAlwaysOnTop, "1", "1"},
      {"alwaysOnTop", "01", &AppState::gAlwaysOnTop, "1", "0"},
      {"eduBackground", "大學", &AppState::gEduBackground, "大學", "大學"},
      {"feedbackErrData", "", &AppState::gFeedbackErrData, "0", "0"},
      {"feedbackErrData", "anything", &AppState::gFeedbackErrData, "anything", "anything"},
      {"userPW", "secret", &AppState::gAccountPassword, "secret", "secret"},
      {"userPW", "0", &AppState::gAccountPassword, "", ""},
      {"Pno", "0", &AppState::gAccountNo, "", ""},
      {"Pno", "12-3", &AppState::gAccountNo, "12-3", "12-3"},
  };
  for (const auto& [key, stored, field, used, kept] : cases) {
    Put(app.gSetupFile, key + ("=" + base::ToCp950(stored)) + "\r\n");
    LoadSettings(program);
    EXPECT_EQ(app.*field, used) << key << "=" << stored;
    EXPECT_EQ(ReadSetup(program, key), kept) << key << "=" << stored;
  }
}

TEST_F(SettingsTest, AnEmptyFileIsFilledAndLeavesNoKeyOut) {
  LoadSettings(program);
  EXPECT_EQ(SetupText(),
            "Pno=\r\nuserPW=\r\nFontSize=MIDDLE\r\nautoCleanHistory=0\r\nautoKeyinPw=0\r\nalwaysOnTop=0\r\n"
            "transformValue=240\r\neduBackground=\r\nfeedbackErrData=0\r\n");
  EXPECT_EQ(app.gInputFontSize, 12);
  EXPECT_THAT(machine.http.requests, IsEmpty()) << "without an account nobody is asked";
  Put(app.gSetupFile, "FontSize=BIG\r\n");
  LoadSettings(program);
  EXPECT_EQ(app.gInputFontSize, 15);
}

TEST_F(SettingsTest, OpacityIsANumberFromAHundredOn) {
  const struct {
    const char* stored;
    int used;
    const char* kept;
  } cases[] = {{"", 240, "240"},      {"x9", 240, "240"},
               {"-5", 240, "240"},    {"9x", 240, "240"},
               {":1", 240, "240"},    {"0", 100, "100"},
               {"50", 100, "100"},    {"99", 100, "100"},
               {"100", 100, "100"},   {"0150", 150, "0150"},
               {"300", 300, "300"},   {"32767", 32767, "32767"},
               {"32768", 240, "240"}, {"99999999999999999999", 240, "240"}};
  for (const auto& [stored, used, kept] : cases) {
    Put(app.gSetupFile, std::string("transformValue=") + stored + "\r\n");
    LoadSettings(program);
    EXPECT_EQ(app.gTransformValue, used) << stored;
    EXPECT_EQ(ReadSetup(program, "transformValue"), kept) << stored;
  }
}

TEST_F(SettingsTest, AccountComesFromTheMirrorWhenTheFileHasNone) {
  const struct {
    const char *setup, *mirror, *account, *password;
  } cases[] = {
      {"", "Pno= 55 \r\nuserPW=pw\r\n", "55", "pw"},
      {"Pno=0\r\nuserPW=0\r\n", "Pno=55\r\nuserPW=pw\r\n", "55", "pw"},
      {"Pno=7\r\nuserPW=mine\r\n", "Pno=55\r\nuserPW=pw\r\n", "7", "mine"},
      {"Pno=7\r\n", "Pno=55\r\nuserPW=pw\r\n", "7", "pw"},
      {"", "Pno=0\r\nuserPW=0\r\n", "", ""},
  };
  for (const auto& [setup, mirror, account, password] : cases) {
    Put(app.gSetupFile, std::string(setup) + "autoKeyinPw=1\r\n");
    PutMirror(mirror);
    LoadSettings(program);
    EXPECT_EQ(app.gAccountNo, account) << setup << mirror;
    EXPECT_EQ(app.gAccountPassword, password) << setup << mirror;
    EXPECT_EQ(ReadSetup(program, "Pno"), account) << setup << mirror;
    EXPECT_EQ(ReadSetup(program, "userPW"), password) << setup << mirror;
    EXPECT_EQ(Content(machine.home / "config" / "marovane" / "account.set"), mirror) << "it is only read";
  }
}

TEST_F(SettingsTest, PasswordThatIsNotToBeKeptStaysInTheFileAlone) {
  for (const auto& [keeps, used] : {std::pair{"0", ""}, {"1", "secret"}, {"", "secret"}}) {
    Put(app.gSetupFile, "userPW=secret\r\nautoKeyinPw=" + std::string(keeps) + "\r\n");
    LoadSettings(program);
    EXPECT_EQ(app.gAccountPassword, used) << keeps;
    EXPECT_EQ(ReadSetup(program, "userPW"), "secret");
  }
}

TEST_F(SettingsTest, ServerAnswersBeforeTheOtherSettingsAreRead) {
  GoOnline();
  machine.http.Route(kSettingsPage,
                     "OK_alwaysOnTop:1$FontSize:BIG$transformValue:180$userPW:fromserver"
                     "$autoKeyinPw:1$eduBackground:" +
                         base::ToCp950("高中") + "$fresh:x:y$alone$");
  Put(app.gSetupFile, "Pno=12-34 5\r\nFontSize=SMALL\r\nuserPW=old\r\n");
  LoadSettings(program);
  EXPECT_EQ(app.gAccountNo, "12345");
  EXPECT_EQ(app.gFontSizeName, "BIG");
  EXPECT_EQ(app.gTransformValue, 180);
  EXPECT_EQ(app.gAccountPassword, "fromserver");
  EXPECT_EQ(app.gEduBackground, "高中");
  EXPECT_EQ(ReadSetup(program, "fresh"), "x");
  EXPECT_EQ(ReadSetup(program, "Pno"), "12-34 5") << "the server's list does not hold it";
  EXPECT_THAT(machine.http.Bodies(kSettingsPage),
              ElementsAre("key=zorbelquinter&pdcode=mrv&pno=12345&met=r"));
  EXPECT_EQ(machine.http.requests.back().url, "http://server/p_getusersettings.asp");
}

TEST_F(SettingsTest, RefusalsAndNonsenseChangeNothing) {
  GoOnline();
  std::string longList = "OK_";
  for (int i = 0; i < 120; ++i) longList += "name" + std::to_string(i) + ":v$";
  const std::string before = "Pno=7\r\nFontSize=SMALL\r\n";
  for (const std::string& reply : std::initializer_list<std::string>{
           "ERR_FontSize:BIG", "", "OK", "OK_", "<html>$FontSize:BIG$</html>", "OK_FontSize:BIG\xA4",
           longList, "OK_$$:$alone$", "OK_\r\nFontSize:BIG"}) {
    machine.http.Route(kSettingsPage, reply);
    Put(app.gSetupFile, before);
    std::string pno = "7";
    SyncUserSettings(program, pno, "r");
    EXPECT_EQ(SetupText(), before) << reply;
  }
  machine.http.RouteToNowhere(kSettingsPage);
  std::string pno = "7 7";
  SyncUserSettings(program, pno, "r");
  EXPECT_EQ(SetupText(), before);
  EXPECT_EQ(pno, "77");
}

TEST_F(SettingsTest, LineEndsInAReplyNeverPileUpInTheFile) {
  GoOnline();
  machine.http.Route(kSettingsPage, "OK_FontSize:BIG$userPW:pw\r\nfoo\r\n");
  std::string pno = "7";
  for (int start = 0; start < 3; ++start) SyncUserSettings(program, pno, "r");
  EXPECT_EQ(SetupText(), "FontSize=BIG\r\nuserPW=pw\r\n");
}

TEST_F(SettingsTest, SendsTheWholeListInItsOrder) {
  std::string pno = "12 3-4";
  SyncUserSettings(program, pno, "w");
  EXPECT_EQ(pno, "12 3-4") << "an unreachable server changes nothing";
  EXPECT_THAT(machine.http.Bodies(kSettingsPage), IsEmpty());
  GoOnline();
  machine.http.Route(kSettingsPage, "OK_");
  for (const auto& [key, value] : {std::pair{"alwaysOnTop", "1"},
                                   {"autoCleanHistory", "0"},
                                   {"autoKeyinPw", "1"},
                                   {"eduBackground", "大學"},
                                   {"feedbackErrData", "0"},
                                   {"FontSize", "BIG"},
                                   {"transformValue", "200"},
                                   {"userPW", "old"}}) {
    WriteSetup(program, key, value);
  }
  const std::string before = SetupText();
  app.gAccountPassword = "pw";
  SyncUserSettings(program, pno, "w");
  EXPECT_THAT(machine.http.Bodies(kSettingsPage),
              ElementsAre("key=zorbelquinter&pdcode=mrv&pno=1234&met=w&setting=alwaysOnTop:1$"
                          "autoCleanHistory:0$autoKeyinPw:1$eduBackground:大學$feedbackErrData:0$"
                          "FontSize:BIG$Pno:1234$transformValue:200$userPW:pw"));
  EXPECT_EQ(SetupText(), base::Replace(before, "unsentSettings=1", "unsentSettings=0"))
      << "a reply to sent settings is not stored";
  app.gAccountPassword.clear();
  SyncUserSettings(program, pno, "w");
  EXPECT_THAT(machine.http.Bodies(kSettingsPage).back(), EndsWith("$userPW:old"));
}

// Saved without a network, or before the password was typed.
TEST_F(SettingsTest, WhatTheServerHasNotAcceptedIsSentBeforeAnythingIsFetched) {
  Put(app.gSetupFile, "Pno=7\r\nFontSize=BIG\r\nuserPW=pw\r\nautoKeyinPw=1\r\n");
  std::string pno = "7";
  SyncUserSettings(program, pno, "w");
  GoOnline();
  machine.http.Route(kSettingsPage, "ERR_WRONG_PASSWORD");
  LoadSettings(program);
  EXPECT_EQ(app.gFontSizeName, "BIG");
  ASSERT_THAT(machine.http.Bodies(kSettingsPage), SizeIs(1)) << "nothing is fetched that is older";
  machine.http.Route(kSettingsPage, "OK_FontSize:SMALL");
  SyncUnsentSettings(program);
  SyncUnsentSettings(program);
  EXPECT_THAT(machine.http.Bodies(kSettingsPage), SizeIs(2));
  EXPECT_THAT(machine.http.Bodies(kSettingsPage).back(), HasSubstr("met=w&setting=alwaysOnTop:0$"));
  LoadSettings(program);
  EXPECT_EQ(app.gFontSizeName, "SMALL") << "another computer's, saved later";
}

TEST_F(SettingsTest, APasswordMayHaveEverySign) {
  const std::string password = "a&b=c%d:e$f%3Dg h";
  GoOnline();
  machine.http.Route(kSettingsPage, "OK_");
  Put(app.gSetupFile, "autoKeyinPw=1\r\n");
  WriteSetup(program, "userPW", password);
  LoadSettings(program);
  EXPECT_EQ(app.gAccountPassword, password);
  std::string pno = "7";
  SyncUserSettings(program, pno, "w");
  const auto form = protocol::Form::Plain(machine.http.Bodies(kSettingsPage).back());
  EXPECT_EQ(protocol::ParseSettings(form.Find("setting").value()).back(),
            (protocol::Setting{"userPW", password}));
}

TEST_F(SettingsTest, FileThatCannotBeWrittenIsRaised) {
  machine.files.fault.FailAt(1);
  EXPECT_THROW(LoadSettings(program), RunTimeError);
}

}  // namespace

}  // namespace marovane
