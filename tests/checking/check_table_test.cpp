// What a check leaves behind, the same for both engines.
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

struct Check {
  const char* name;
  std::string findMistake, errcode, marked;
  bool isBusy;
  std::string verdict;
  Color color;
  std::vector<std::string> rows;
};

const std::string kInput = "He's go.";

const std::vector<Check>& Checks() {
  static const std::vector<Check> checks{
      {"right", "0", "0", "", false, "PASS", kGreen, {"ok|N|He’s go.|2026-11-05|N|0|0|N"}},
      {"faulty",
       "1",
       "!A1B2C3D4#x",
       "He's *go*.",
       false,
       "ERRS",
       kRed,
       {"err|He’s *go*.|A1B2C3|2026-11-05|N|0|0|N", "A1B2C3|1"}},
      {"to watch",
       "2",
       " W1 ",
       "*He's* go.",
       false,
       "WARN",
       kRed,
       {"err|*He’s* go.|W1|2026-11-05|N|0|0|N", "W1|1"}},
      {"no code",
       "1",
       "   ",
       "He's *go*.",
       false,
       "ERRS",
       kRed,
       {"err|He’s *go*.|0|2026-11-05|N|0|0|N", "0|1"}},
      {"right again", "0", "0", "", true, "PASS", kGreen, {}},
      {"faulty again", "1", "A1", "He's *go*.", true, "ERRS", kRed, {}},
  };
  return checks;
}

class CheckTableTest : public CheckingTest {
 protected:
  void Prepare(const Check& check) {
    app.gSentencesBusy = check.isBusy;
    app.gVerdict = "before";
    WriteSetup(program, "NeedSync", "N");
    for (const char* table : {"oksentence", "errsentence", "mistakes"}) {
      machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)
          ->RunScript(std::string("delete from ") + table);
    }
  }
  void Expect(const Check& check) {
    EXPECT_EQ(app.gVerdict, check.verdict);
    EXPECT_THAT(Recorded(), ElementsAreArray(check.rows));
    EXPECT_EQ(NeedSync(), "Y");
    EXPECT_EQ(Main().txtInput.SelColor(), check.color);
    EXPECT_EQ(machine.windows.Focused(), &Main().txtFocus);
    ExpectIdle(kInput);
  }
};

TEST_F(CheckTableTest, HoldsForTheWebEngine) {
  for (const Check& check : Checks()) {
    SCOPED_TRACE(check.name);
    Prepare(check);
    machine.http.Route("p_passWebEngine.asp", base::ToCp950("OK_" + check.findMistake + "#" +
                                                            (check.findMistake == "0" ? "" : check.errcode) +
                                                            "#p/1.htm#" + check.marked));
    if (check.errcode.find('#') != std::string::npos) {  // the sign parts the fields here
      machine.http.Route("p_passWebEngine.asp", "OK_1#!A1B2C3D4#p/1.htm# He's *go*. ");
    }
    fakes.frmBrowser.visited.clear();
    Enter(kInput);
    Expect(check);
    EXPECT_THAT(fakes.frmBrowser.visited, ElementsAre("2 http://engine/p/1.htm"));
  }
}

TEST_F(CheckTableTest, HoldsForTheLocalEngine) {
  for (const Check& check : Checks()) {
    SCOPED_TRACE(check.name);
    Prepare(check);
    Keys keys{{"findMistake", check.findMistake}, {"errcode", check.errcode}};
    if (!check.marked.empty()) keys["sentence"] = check.marked;
    UseLocalEngine(Engine(keys));
    Enter(kInput);
    Expect(check);
    EXPECT_THAT(fakes.frmBrowser.visited, IsEmpty());
  }
}

TEST_F(CheckTableTest, EachCheckAddsItsOwnRow) {
  machine.http.Route("p_passWebEngine.asp", "OK_1#A1#p.htm#He *go*.");
  Enter("He go.");
  Enter("He go.");
  machine.http.Route("p_passWebEngine.asp", "OK_0##p.htm");
  Enter("He goes.");
  EXPECT_THAT(Recorded(),
              ElementsAre("ok|N|He goes.|2026-11-05|N|0|0|N", "err|He *go*.|A1|2026-11-05|N|0|0|N",
                          "err|He *go*.|A1|2026-11-05|N|0|0|N", "A1|2"));
  EXPECT_THAT(
      Rows(machine.realDatabases, recordsPath,
           "select count(distinct sid), min(length(sid)) from (select sId as sid from oksentence union "
           "all select id from errsentence)",
           2),
      ElementsAre("3|14"));
}

TEST_F(CheckTableTest, AnotherWordThanAVerdictIsRecordedAsFaulty) {
  app.gVerdict = "PASS";
  UseLocalEngine(Engine({{"findMistake", "3"}, {"errcode", "A1"}, {"sentence", "He *go*."}}));
  Enter("He go.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_EQ(Main().txtInput.SelColor(), kRed);
  EXPECT_THAT(Recorded(), ElementsAre("err|He *go*.|A1|2026-11-05|N|0|0|N", "A1|1"));
}

TEST_F(CheckTableTest, SuggestionsOpenTheirWindow) {
  const struct {
    bool isWeb;
    std::string collocations, similar;
    std::vector<std::string> log;
  } cases[] = {
      {true, "0", "", {}},
      {true, "", "0", {}},
      {true, "take<@>make", "", {"hide", "COL take,make"}},
      {true, "0", "big<@>large<@>huge", {"hide", "SYN big,large,huge"}},
      {true, "take", "big", {"hide", "COL take", "SYN big"}},
      {false, "0", "", {}},
      {false, "", "", {}},
      {false, "take,make", "", {"COL take,make"}},
  };
  for (const auto& [isWeb, collocations, similar, log] : cases) {
    SCOPED_TRACE(collocations + " / " + similar);
    fakes.frmSuggest.log.clear();
    fakes.frmSuggest.Hide();
    app.gUseWebEngine = isWeb;
    machine.http.Route("p_passWebEngine.asp", "OK_0##p.htm#" + collocations + "#" + similar);
    if (!isWeb) UseLocalEngine(Engine({{"findMistake", "0"}, {"col_suggestion", collocations}}));
    Enter("He goes.");
    EXPECT_EQ(fakes.frmSuggest.log, log);
    EXPECT_EQ(fakes.frmSuggest.Visible(), !log.empty());
  }
}

}  // namespace

}  // namespace marovane
