// The tree of errors: categories, below them the codes, each with how often it has occurred.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/html.h"
#include "records/err_list_db.h"
#include "records/record_db.h"

namespace marovane {

struct CountedCode {
  ErrorCode code;
  int count = 0;
};

struct CountedCategory {
  ErrorCategory category;
  int count = 0;  ///< of all codes with its prefix, also of those that the catalogue does not know
  std::vector<CountedCode> codes;
};

/// What has occurred, in order of ids and codes. Throws RunTimeError.
/// @param afterEachCode called after each code of the catalogue that was counted
std::vector<CountedCategory> CountErrors(ErrListDb& errList, RecordDb& records,
                                         const std::function<void()>& afterEachCode = {});

/// The tree as a page, all branches closed. A click on a code gives the command "rem:errcode:" + code, a
/// double click "cmd:errcode:" + code, a click on a category "rem:clear".
/// @param programFolder where the pictures of the branches are, in ui/
base::Html ErrorStatisticsPage(const std::string& programFolder,
                               const std::vector<CountedCategory>& categories);

}  // namespace marovane
