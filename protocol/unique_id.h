// Ids of rows and posts that no other run, computer or server makes.
#pragma once

#include <string>
#include <string_view>

#include "base/day.h"

namespace protocol {

/// Makes the ids of one run.
class UniqueIds {
 public:
  /// 25 digits, of which the first is 9, thirteen are the milliseconds since 2006/01/01 00:00:00 UTC, three a
  /// running number, and eight are drawn for each run. Ids sort as texts by time, those of a run also when
  /// its clock is set back, and after all ids of older versions.
  std::string Next(base::UtcTime now);

 private:
  base::UtcTime time_{};  // of the latest one
  int number_ = 0;        // of the latest one in its millisecond
  std::string random_;
};

/// True for such an id. Older versions made shorter ones, which several computers may have.
bool IsUniqueId(std::string_view text);

}  // namespace protocol
