// A whole program whose learner writes essays, with an engine and a school's server that answer as the test
// wants.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "app/compose.h"
#include "base/cp950.h"
#include "platform/event_loop.h"
#include "records/essay_records.h"
#include "tests/support/expect_message.h"
#include "tests/support/fake_hall.h"
#include "tests/support/test_machine.h"

namespace marovane {

struct StoredEssay {
  const char* essayId;
  const char* workId;
  const char* quiz = "My day";
  const char* finalSet = "N";
  unsigned day = 5;  ///< of November 2026
  int mistakes = 0;
  const char* upload = "Y";
  const char* text = "I run.";
};

/// The web engine finds nothing wrong in a sentence without an entry in `replies`. Real databases, virtual
/// clock.
class EssayTest : public ::testing::Test {
 protected:
  EssayTest();

  /// Leads the doors of splash and upload of a program to windows that do nothing.
  void LeadAside(Composition& whole, FakeUpload& itsUpload);
  /// Sends a text in the essay window that is open. Returns when the walk has ended.
  void SendFrom(FrmEssay& window, const std::string& text);
  /// The same in a window that is opened for a topic of the learner's own.
  void Send(const std::string& text);
  /// The same with an essay that is done in the end.
  void SendToTheEnd(const std::string& text) {
    ExpectMessage(Message::kEssayDone);
    Send(text);
  }
  void ExpectMessage(const Message& message, MessageButton answer = kOk,
                     const std::function<void()>& meanwhile = {}) {
    marovane::ExpectMessage(machine.user, message, answer, "", meanwhile);
  }
  /// Has the learner act when the walk next asks for a correction.
  void OnCorrection(std::function<void()> act) { corrections_.push_back(std::move(act)); }
  void Correct(const std::string& sentence);
  /// Expects the message about a refused sentence, and has the learner correct the sentence.
  void CorrectRefused(const std::string& sentence) {
    ExpectMessage(Message::kWrongSentence);
    Correct(sentence);
  }
  void BreakOff() {
    OnCorrection([this] { machine.user.Click(composition.frmMain->imgMenu(10)); });
  }

  /// Puts an essay with its sentences into the records.
  void Put(const StoredEssay& essay);
  /// What the server answers when it is asked for assignments.
  void Assign(const std::string& reply) {
    machine.http.Route("p_mrv_get_essay_work.asp", base::ToCp950(reply));
  }
  FrmEssayInputEdu& OpenTopics();
  FrmEssayCollect& OpenCollection(const std::string& workId, const std::string& mode);
  /// Reads the inputs of the collection's page as a browser does, and ticks the boxes of rows.
  void Tick(const std::vector<int>& rows);

  /// Rows as short lines: "sentence|haveHtm", "sentence|errcode|haveHtm".
  std::vector<std::string> OkRows() {
    return Texts("select sentence || '|' || haveHtm from oksentence order by rowid");
  }
  std::vector<std::string> ErrRows() {
    return Texts("select sentence || '|' || errcode || '|' || haveHtm from errsentence order by rowid");
  }
  EssayRow LastEssay();
  int Mistakes(const std::string& errcode) { return composition.records.CountMistakes(errcode); }
  std::vector<std::string> Texts(const std::string& sql) { return Texts(composition.records.Db(), sql); }
  /// First columns of all rows.
  static std::vector<std::string> Texts(base::Database& db, const std::string& sql);
  /// Essays with a flag of the upload, sorted.
  std::string EssaysWith(const std::string& upload);
  std::string FinalSet(const std::string& essayId) {
    return EssayRecords(composition.records).FindEssay(essayId)->finalSet;
  }
  /// Has the engine answer by `replies`, as it does at first.
  void RouteEngine();
  /// Sentences that the engine was asked about.
  std::vector<std::string> Asked() const;
  FrmEssay& Window() { return *room.frmEssay; }

  TestMachine machine;
  std::map<std::string, std::string> replies{{"He go home.", "OK_1#AG01#page.htm#*He go* home ."}};
  Composition composition;
  EssayContext& room = composition.essay;
  AppState& app = composition.program.app;
  FakeUpload upload{app};

 private:
  std::string Reply(const std::string& body) const;

  FakeSplash splash_{machine.machine};
  std::deque<std::function<void()>> corrections_;
  Subscription correcting_;
};

/// The same at a school.
class SchoolTest : public EssayTest {
 protected:
  SchoolTest() { app.gEdition = "XQD"; }
};

/// What a page shows below its head, a line for each row, cells separated by blanks.
std::string RowsOf(const WebBrowser& browser);
/// The commands of a page's links without their "cmd:", in order, separated by blanks.
std::string CommandsOf(const WebBrowser& browser);

}  // namespace marovane
