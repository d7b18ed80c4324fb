// A program whose records hold essays on topics, with a school's server that answers as the test wants.
#pragma once

#include <string>
#include <vector>

#include "tests/essay/essay_fixture.h"

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

class TopicsTest : public EssayTest {
 protected:
  TopicsTest();

  void Put(const StoredEssay& essay);
  void UseEdition(const std::string& edition) { app.gEdition = edition; }
  /// What the server tells of assignments.
  void Assign(const std::string& reply);
  FrmEssayInputEdu& OpenTopics();
  FrmEssayCollect& OpenCollection(const std::string& workId, const std::string& mode);
  /// Reads the inputs of the collection's page as a browser does, and ticks the boxes of rows.
  void Tick(const std::vector<int>& rows);
  /// Essays with a flag of the upload, sorted.
  std::string EssaysWith(const std::string& upload);
  std::string FinalSet(const std::string& essayId);

  EssayContext& room = composition.essay;
};

/// What a page shows below its head, a line for each row, cells parted by blanks.
std::string RowsOf(const WebBrowser& browser);
/// The commands of a page's links, in order.
std::vector<std::string> CommandsOf(const WebBrowser& browser);

}  // namespace marovane
