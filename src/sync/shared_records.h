// Records that several pupils had in common.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// Older versions kept the records of all pupils of a computer in one database. It becomes that of one of
/// them, and each waiting post goes to the account that it names. A kill leaves each file at one of the two
/// places, and the next call goes on. Where the learner has records already, the others are set aside there.
/// Throws RunTimeError when a file cannot be moved.
/// @param owner account whose records they become
void MoveSharedRecords(Program& program, const std::string& owner);

}  // namespace marovane
