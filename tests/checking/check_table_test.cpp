// The results of a check, which are the same for both engines.
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

// As a row of Recorded() ends.
const std::string kTail = "|2026-11-05|N|0|0|N";
const std::string kInput = "He's go.";

struct Check {
  std::string findMistake, errcode, marked, verdict;
  std::vector<std::string> rows;  // none: a sentence of the list is analysed again
};

const Check kChecks[] = {
    {"0", "0", "", "PASS", {"ok|N|He’s go." + kTail}},
    {"1", "!A1B2C3D4#x", "He's *go*.", "ERRS", {"err|He’s *go*.|A1B2C3" + kTail, "A1B2C3|1"}},
    {"2", " W1 ", "*He's* go.", "WARN", {"err|*He’s* go.|W1" + kTail, "W1|1"}},
    {"1", "   ", "He's *go*.", "ERRS", {"err|He’s *go*.|0" + kTail, "0|1"}},
    {"0", "0", "", "PASS", {}},
    {"1", "A1", "He's *go*.", "ERRS", {}},
};

class CheckTableTest : public CheckingTest {
 protected:
  /// Runs every check, each by a way to have the engine give its answer.
  void TryAll(const std::function<void(const Check&)>& prepare) {
    for (const Check& check : kChecks) {
      SCOPED_TRACE(check.findMistake + check.errcode + (check.rows.empty() ? " again" : ""));
      app.gSentencesBusy = check.rows.empty();
      app.gVerdict = "before";
      WriteSetup(program, "NeedSync", "N");
      Execute("delete from oksentence; delete from errsentence; delete from mistakes");
      fakes.frmBrowser.visited.clear();
      prepare(check);
      Enter(kInput);
      EXPECT_EQ(app.gVerdict, check.verdict);
      EXPECT_THAT(Recorded(), ElementsAreArray(check.rows));
      EXPECT_EQ(NeedSync(), "Y");
      EXPECT_EQ(Main().txtInput.SelColor(), check.verdict == "PASS" ? kGreen : kRed);
      EXPECT_EQ(machine.windows.Focused(), &Main().txtFocus);
      ExpectIdle(kInput);
      std::vector<std::string> visited;
      if (app.gUseWebEngine) visited.emplace_back("2 http://engine/p/1.htm");
      EXPECT_EQ(fakes.frmBrowser.visited, visited);
    }
  }
};

TEST_F(CheckTableTest, HoldsForTheWebEngine) {
  TryAll([this](const Check& check) {
    const std::string code = check.findMistake == "0" ? "" : check.errcode;
    // The sign in the code parts the fields here.
    const bool isParted = code.find('#') != std::string::npos;
    machine.http.Route("p_passWebEngine.asp",
                       isParted ? "OK_1#!A1B2C3D4#p/1.htm# He's *go*. "
                                : "OK_" + check.findMistake + "#" + code + "#p/1.htm#" + check.marked);
  });
}

TEST_F(CheckTableTest, HoldsForTheLocalEngine) {
  TryAll([this](const Check& check) {
    Keys keys{{"findMistake", check.findMistake}, {"errcode", check.errcode}};
    if (!check.marked.empty()) keys["sentence"] = check.marked;
    UseLocalEngine(Engine(keys));
  });
}

TEST_F(CheckTableTest, EachCheckAddsItsOwnRow) {
  machine.http.Route("p_passWebEngine.asp", "OK_1#A1#p.htm#He *go*.");
  Enter("He go.");
  Enter("He go.");
  machine.http.Route("p_passWebEngine.asp", "OK_0##p.htm");
  Enter("He goes.");
  const std::string faulty = "err|He *go*.|A1" + kTail;
  EXPECT_THAT(Recorded(), ElementsAre("ok|N|He goes." + kTail, faulty, faulty, "A1|2"));
  EXPECT_THAT(Query("select count(distinct sid), min(length(sid)) from (select sId as sid from oksentence "
                    "union all select id from errsentence)"),
              ElementsAre("3|25"));
}

TEST_F(CheckTableTest, AnotherWordThanAVerdictIsRecordedAsFaulty) {
  app.gVerdict = "PASS";
  UseLocalEngine(Engine({{"findMistake", "3"}, {"errcode", "A1"}, {"sentence", "He *go*."}}));
  Enter("He go.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_EQ(Main().txtInput.SelColor(), kRed);
  EXPECT_THAT(Recorded(), ElementsAre("err|He *go*.|A1" + kTail, "A1|1"));
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
    machine.http.Route("p_passWebEngine.asp", "OK_0##p.htm#" + collocations + "#" + similar);
    if (!isWeb) UseLocalEngine(Engine({{"findMistake", "0"}, {"col_suggestion", collocations}}));
    Enter("He goes.");
    EXPECT_EQ(fakes.frmSuggest.log, log);
    EXPECT_EQ(fakes.frmSuggest.Visible(), !log.empty());
  }
}

}  // namespace

}  // namespace marovane
