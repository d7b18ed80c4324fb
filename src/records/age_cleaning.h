// What the end of a run does to old records.
#pragma once

#include "base/day.h"

namespace marovane {

struct Program;
class RecordDb;

/// Removes all records of the days before the given one, after it has appended them to `archive.mdb` beside
/// the database, which nothing but a person reads. Throws RunTimeError when a statement fails.
void RemoveRecordsBefore(Program& program, RecordDb& records, base::Day day);

}  // namespace marovane
