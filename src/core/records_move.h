// Records are not kept where the system empties the folders: those that an older version has left there move
// to the data folder at the start, before anything is opened.
#pragma once

#include <chrono>
#include <string>

namespace base {
class Databases;
class Files;
}  // namespace base

namespace marovane {

struct Environment;

/// Where a run has its records.
struct StartPlace {
  std::string root;    ///< of all working data, for the whole run
  std::string notice;  ///< what the learner is to be told; "" for nothing
};

/// Finishes the move of an earlier start, moves what it finds in a temporary root, and makes the folders of
/// the root, for their owner alone. Another start that is moving is waited for. Records that another program
/// has open, or that cannot be copied, stay where they are until the next start, and this run uses them
/// there, unless the data folder has records already. Throws RunTimeError when the records can be used
/// nowhere; the next start goes on then.
/// @param patience how long another start may take
StartPlace FindRecords(base::Files& files, base::Databases& databases, const Environment& environment,
                       std::chrono::milliseconds patience = std::chrono::minutes{1});

}  // namespace marovane
