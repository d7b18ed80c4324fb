// The report of an essay in the essay window.
#pragma once

#include <string>

#include "base/html.h"

namespace marovane {

struct EssayContext;

/// The report's page (HTML in UTF-8), made from the records alone. Throws RunTimeError for an unknown essay.
base::Html EssayReportPage(EssayContext& context, const std::string& essayId);

/// Loads the essay window afresh and shows the report in the place of the input box. It may be called by a
/// procedure of the old window: that one lives until its handler has returned. Throws RunTimeError, and
/// leaves the window as it is, when there is no such essay.
/// @param viewOnly no walk has just ended
void ShowEssayResultHtml(EssayContext& context, const std::string& essayId, bool viewOnly);

}  // namespace marovane
