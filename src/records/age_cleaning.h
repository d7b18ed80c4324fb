// What the end of a run does to the records.
#pragma once

#include "base/day.h"
#include "records/day_records.h"

namespace marovane {

struct Program;

/// Every procedure throws RunTimeError when a statement fails.
class AgeCleaning {
 public:
  AgeCleaning(Program& program, RecordDb& records) : program_(program), records_(records) {}

  /// Removes all records of the days before the given one, after it has appended them to `archive.mdb` beside
  /// the database, which nothing but a person reads.
  void RemoveBefore(base::Day day);

  /// Rows of `oksentence` and `errsentence`, whatever their flags.
  int CountOkSentences();
  int CountErrSentences();
  /// True when a sentence or an essay has not been uploaded.
  bool HasNewRows();

 private:
  void Archive(base::Day day);

  Program& program_;
  RecordDb& records_;
};

}  // namespace marovane
