// The list of the essays of one topic.
#pragma once

#include <string>
#include <vector>

#include "base/html.h"
#include "records/essay_records.h"

namespace marovane {

struct CollectedEssay {
  EssayRow essay;
  int mistakes = 0;
};

struct EssayCollection {
  std::vector<CollectedEssay> rows;
  bool canHandIn = false;   ///< they are of an assignment: each row says whether it was or can be handed in
  bool isHandedIn = false;  ///< one of them was
  std::string imageRoot;    ///< address of the pictures' folder, ended by "/"
};

/// Row n, counted from 1, has a box "chk" + n with the essay's id, and a hidden field "rec" + n. Links are
/// "cmd:show:" and an essay's id, "cmd:snd:" with "@" and its topic after that, "cmd:res:" and a topic.
base::Html EssayCollectPage(const EssayCollection& collection);

}  // namespace marovane
