// An essay with the check engine's marks beside its sentences.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/html.h"
#include "server/services/shared_engine.h"

namespace server {

struct EssaySentence {
  std::string text;
  bool beginsParagraph = false;
};

/// The sentences that the pupil's program has had judged, and what comes after the last one.
std::vector<EssaySentence> SentencesOf(std::string_view essay);

/// The sentences of a stored essay, each with what the engine says about it. Only the first hundred are
/// judged; when the engine cannot be used the sentences come alone, under a line that says so.
base::Html MarkedEssay(std::string_view essay, const SharedEngine& engine);

}  // namespace server
