// The analysis report of an essay: the essay again, each sentence coloured by its fate.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/html.h"
#include "records/essay_records.h"

namespace marovane {

/// What a report is made of. Texts as they are stored.
struct EssayReport {
  EssayRow essay;
  std::vector<OkSentence> okSentences;    ///< in their order within the essay
  std::vector<ErrSentence> errSentences;  ///< in the order of time
  std::string imageRoot;                  ///< address of the pictures' folder, ended by "/"
  std::function<std::string(const std::string& errcode)> outlineOf;  ///< "" for an unknown code
};

/// The page. Its links are "cmd:show:" and the checksum of an archived engine page; a click on a
/// sentence opens and closes its list of wrong attempts. Throws RunTimeError for more than 1000 sentences.
base::Html BuildEssayReport(const EssayReport& report);

}  // namespace marovane
