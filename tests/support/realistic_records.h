// Records as a learner would have made them.
#pragma once

#include "base/database.h"
#include "base/day.h"

namespace marovane {

struct RealisticRecords {
  int sentences = 2000;
  int days = 200;  ///< the last of them is lastDay; some have no sentences
  base::Day lastDay{};
  unsigned seed = 1;
};

/// Fills an empty record database. Two in three sentences are right, one in ten belongs to one of the essays,
/// and every flag of the upload occurs. The same wish gives the same rows.
void FillRealistically(base::Database& db, const RealisticRecords& wish);

}  // namespace marovane
