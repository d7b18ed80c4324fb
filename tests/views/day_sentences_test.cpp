#include "views/day_sentences.h"

#include "platform/run_time_error.h"
#include "tests/views/views_fixture.h"
#include "views/day_sentences_page.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using namespace ::testing;

/// Notes what is in the input box when the engine is asked.
class AskedMain : public FakeMain {
 public:
  AskedMain(Machine& theMachine, AppState& app) : FakeMain(theMachine), app_(app) {}
  void PassStringToEngine() override {
    asked.push_back(txtInput.Text() + (app_.gSentencesBusy ? " busy" : " idle"));
    if (fails) throw RunTimeError("no engine");
  }
  std::vector<std::string> asked;
  bool fails = false;

 private:
  AppState& app_;
};

class DaySentencesTest : public ViewsTest {
 protected:
  DaySentencesTest() {
    FakeHall::Lead(program.hall.frmMain, main);
    PutOk({"11", "2026-11-04", " My brother’s dog is big. ", "N", ""});
    PutOk({"12", "2026-11-05", "She reads."});
    PutOk({"13", "2026-11-05", "Why?", "Y"});
    PutOk({"14", "2026-11-05", "gone", "D"});
    PutOk({"15", "2026-11-05", "of an essay", "N", "77"});
    PutErr({"21", "2026-11-05", "He’s *go*.", "D"});
    PutErr({"22", "2026-11-05", "of an essay too", "N", "77"});
  }

  FrmSentences& Open(const std::string& mode = "OKONLY", const std::string& days = "") {
    frmSentences->ShowDaySentences(mode, days);
    frmSentences->Show();
    LoadInputs(frmSentences->webHtml);
    return *frmSentences;
  }

  /// The sentences of the page, by its hidden fields.
  std::string Shown() {
    std::string text;
    const auto& values = frmSentences->webHtml.inputValues;
    for (int row = 1; values.contains("rec" + std::to_string(row)); ++row) {
      text += values.at("rec" + std::to_string(row)) + "|";
    }
    return text;
  }

  void Check(std::initializer_list<int> rows) { ViewsTest::Check(frmSentences->webHtml, rows); }

  void AnswerOptions(int option, int button) {
    machine.user.OnModal([this, option, button](Form& form) {
      auto& dialog = dynamic_cast<FrmBindSelect&>(form);
      dialog.optLink(0).Value = true;
      machine.user.Click(dialog.lblOption(option));
      machine.user.Click(dialog.picButtons(button));
    });
  }

  AskedMain main{machine.machine, app};
  Window<FrmBindSelect> frmBindSelect{program};
  Window<FrmSentences> frmSentences{program, records, frmBindSelect};
};

TEST_F(DaySentencesTest, ListsWhatModeAndDaysAskFor) {
  const struct {
    const char *mode, *days, *shown;
  } kCases[] = {
      {"OKONLY", "", "My brother's dog is big.|She reads.|Why?|"},
      {"OKONLY", "2026/11/5", "She reads.|Why?|"},
      {"OKONLY", "2026/11/5#2026/11/04", "My brother's dog is big.|She reads.|Why?|"},
      {"OKONLY", "2026/1/1", ""},
      {"ALL", "2026/11/5", "She reads.|Why?|He’s *go*.|"},
      {"OTHER", "", ""},
  };
  for (const auto& c : kCases) {
    Open(c.mode, c.days);
    EXPECT_EQ(Shown(), c.shown) << c.mode << " " << c.days;
  }
  EXPECT_THROW(Open("OKONLY", "yesterday"), RunTimeError);
  // Many days are no more than one condition.
  std::string days;
  for (int year = 1; year < 2500; ++year) days += std::to_string(year) + "/11/5#";
  Open("OKONLY", days + "2026/11/4");
  EXPECT_EQ(Shown(), "My brother's dog is big.|She reads.|Why?|");
}

TEST_F(DaySentencesTest, RowsAreWrittenToTheBlank) {
  const std::string page = DaySentencesPage({{"12", "She’s \"here\"."}}, {{"21", "He *go*."}}).Markup();
  EXPECT_THAT(
      page, HasSubstr("<input type='HIDDEN' name='rec1' id='rec1' value=\"She&#39;s &quot;here&quot;.\">\r\n"
                      "<tr style='font-family: Arial; font-size: 15px; color: #FFCC00'>\r\n"
                      "<td valign='top' height='30' width='10%' align='center' valign='top'><input "
                      "type='checkbox' name='chk1' id='chk1' value='12'></td>\r\n"
                      "<td valign='top' height='30' width='90%' align='left' valign='top'><a "
                      "style='text-decoration: none; color:#FFFFFF;' href='#' "
                      "data-tick='chk1' data-open='cmd:passEngine'><font class='hot' "
                      "style='color:#FFFFFF;'>She&#39;s &quot;here&quot;.</font></a></td>\r\n</tr>\r\n"));
  EXPECT_THAT(page, HasSubstr("id='rec2' value='He *go*.'>"));
  EXPECT_THAT(page,
              HasSubstr("<td valign='top' height='30' width='10%' align='center'><input type='checkbox' "
                        "name='chk2' id='chk2' value='21'></td>"));
}

TEST_F(DaySentencesTest, ButtonsSayWhatIsMissing) {
  Open("OKONLY", "2026/1/1");
  ExpectMessage(Message::kNoSentences);
  machine.user.Click(frmSentences->picButtons(0));
  Open();
  ExpectMessage(Message::kChooseSentences);
  machine.user.Click(frmSentences->picButtons(1));
  Check({1, 2});
  ExpectMessage(Message::kOneRowAtATime);
  machine.user.Click(frmSentences->picButtons(2));
  // A double click marks a third box.
  Check({3});
  ExpectMessage(Message::kOneRowAtATime);
  EXPECT_FALSE(frmSentences->webHtml.FollowLink("cmd:passEngine"));
  EXPECT_TRUE(main.asked.empty());
}

TEST_F(DaySentencesTest, ChecksTheChosenSentenceAgain) {
  Open();
  Check({1});
  main.txtInput.Text = "what was there";
  EXPECT_FALSE(frmSentences->webHtml.FollowLink("cmd:passEngine"));
  EXPECT_THAT(main.asked, ElementsAre("My brother's dog is big. busy"));
  EXPECT_FALSE(app.gSentencesBusy);
  EXPECT_FALSE(frmSentences->webHtml.Checked("chk1"));
  EXPECT_EQ(main.txtInput.SelLength, 24);
  EXPECT_EQ(main.txtInput.SelFontName(), "Arial");
  EXPECT_EQ(main.txtInput.SelColor, Rgb(255, 204, 0));
  // An engine that fails leaves later checks as they are.
  Check({2});
  main.fails = true;
  EXPECT_THROW(machine.user.Click(frmSentences->picButtons(2)), RunTimeError);
  EXPECT_FALSE(app.gSentencesBusy);
  EXPECT_FALSE(frmSentences->webHtml.FollowLink("cmd:other"));
  EXPECT_EQ(main.asked.size(), 2);
}

TEST_F(DaySentencesTest, DeletesAndRefillsAfterASecond) {
  Open("ALL", "2026/11/5");
  Check({1, 3});
  ExpectMessage(Message::kDeleteSentences, kCancel);
  machine.user.Click(frmSentences->picButtons(1));
  EXPECT_EQ(Query("select upload from oksentence where sId = '12'"), "N");
  ExpectMessage(Message::kDeleteSentences);
  machine.user.Click(frmSentences->picButtons(1));
  EXPECT_EQ(Query("select sId from oksentence where upload = 'D' order by 1"), "12 14");
  EXPECT_EQ(Query("select id from errsentence where upload = 'D'"), "21");
  ExpectMessage(Message::kDeleted);
  machine.loop.Wait(2000ms);
  LoadInputs(frmSentences->webHtml);
  EXPECT_EQ(Shown(), "Why?|");  // the right ones only, still of that day
}

TEST_F(DaySentencesTest, ADeletionThatFailsDeletesNothing) {
  Open();
  Check({1, 2});
  for (int step = 2; step <= 6; ++step) {
    machine.databases.fault.Reset();
    machine.databases.fault.FailAt(step);
    EXPECT_THROW(frmSentences->CleanupSelectedRecord(), RunTimeError) << step;
    EXPECT_EQ(Query("select sId from oksentence where upload = 'D'"), "14") << step;
  }
}

TEST_F(DaySentencesTest, ExportsWhatWasAskedFor) {
  const std::string file = (machine.home / "out").string();
  const struct {
    int option, button;
    bool saves;
    std::optional<std::string> text;
  } kCases[] = {
      {1, 0, true, "My brother's dog is big.\r\nWhy?\r\n\r\n"},
      {0, 0, true, "My brother's dog is big. Why?. \r\n"},
      {1, 1, true, std::nullopt},   // gave up at the options
      {1, 0, false, std::nullopt},  // gave up at the file
  };
  for (const auto& c : kCases) {
    std::filesystem::remove(file + ".txt");
    machine.desktop.saveSuggestions.clear();
    machine.desktop.saveAnswer = c.saves ? std::optional(file) : std::nullopt;
    Open();
    Check({1, 3});
    AnswerOptions(c.option, c.button);
    if (c.text) ExpectMessage(Message::kExported);
    machine.user.Click(frmSentences->picButtons(0));
    EXPECT_EQ(Content(file + ".txt"), c.text);
    EXPECT_EQ(machine.desktop.saveSuggestions.size(), c.button == 0 ? 1 : 0);
    EXPECT_FALSE(app.gOpenBindSelect);
  }
}

TEST_F(DaySentencesTest, AFileIsReplacedWholeOrNotAtAll) {
  const std::string file = machine.home / "list.txt";
  const std::string before = "a longer text that was there before";
  Put(file, before);
  ExpectMessage(Message::kOverwriteFile, kNo);
  EXPECT_FALSE(ExportSentences(program, file, {"New."}, false));
  EXPECT_EQ(Content(file), before);
  for (int step = 1; step <= 4; ++step) {  // three of the writing, then the rename
    machine.files.fault.Reset();
    machine.files.fault.FailAt(step);
    ExpectMessage(Message::kOverwriteFile, kYes);
    ExpectMessage(Message::kUnexpectedError, kOk, file);
    EXPECT_FALSE(ExportSentences(program, file, {"New."}, false)) << step;
    EXPECT_EQ(Content(file), before) << step;
    EXPECT_THAT(machine.realFiles.List(machine.home.Path()), ElementsAre("list.txt")) << step;
  }
  machine.files.fault.Reset();
  ExpectMessage(Message::kOverwriteFile, kYes);
  ExpectMessage(Message::kExported);
  EXPECT_TRUE(ExportSentences(program, file, {"New."}, false));
  EXPECT_EQ(Content(file), "New.\r\n\r\n");
}

}  // namespace

}  // namespace marovane
