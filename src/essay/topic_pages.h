// The two lists of topics: the teacher's assignments, and those of the learner's own.
#pragma once

#include <string>
#include <vector>

#include "base/html.h"
#include "protocol/lists.h"
#include "records/essay_records.h"

namespace marovane {

/// What the records hold of a topic.
struct Practice {
  std::vector<EssayRow> essays;  ///< in the order of time
  int mistakes = 0;              ///< in the newest of them
};

struct AssignedTopic {
  protocol::Assignment assignment;
  Practice practice;
};

struct OwnTopic {
  std::string workId;
  std::string title;
  bool isBroken = false;  ///< its first essay was not walked to the end
  Practice practice;
};

/// The pages' links are commands and arguments: "cmd:wid:" starts an essay on a topic, "cmd:res:" opens the
/// teacher's comment, "cmd:col:" the essays of a topic, "cmd:show:" the report of an essay, "cmd:del:"
/// deletes essays (their ids, each followed by "|"), "cmd:tab:" turns to the list 1 or 2.
/// @param imageRoot address of the pictures' folder, ended by "/"
base::Html AssignedWorkPage(const std::string& imageRoot, const std::vector<AssignedTopic>& topics);
/// @param hasTabs the strip that leads to the list of assignments comes first
base::Html OwnTopicsPage(const std::string& imageRoot, bool hasTabs, const std::vector<OwnTopic>& topics);

}  // namespace marovane
