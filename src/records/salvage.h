// Records from a damaged database.
#pragma once

#include "base/database.h"

namespace marovane {

struct Program;

/// Copies what can still be read into an empty database, row by row, around damaged pages.
/// @return the number of rows
/// Throws RunTimeError when the empty one cannot be written; it then stays empty.
int SalvageRows(base::Database& damaged, base::Database& empty);

/// When `Marovane.mdb` is damaged: makes a new one of what can still be read, sets the damaged one aside, and
/// shows the user a message. A kill at any point leaves the old file, or the new one with the old one set
/// aside; the next start finishes the work. When something goes wrong, all stays as it was, and a message
/// says so.
void MendRecords(Program& program);

}  // namespace marovane
