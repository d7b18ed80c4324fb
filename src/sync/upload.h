// The upload of what is new or deleted: one form per table.
#pragma once

#include <functional>
#include <string>

#include "records/sync_records.h"
#include "sync/outbox.h"

namespace marovane {

struct Program;

/// Marks as sent the rows of posts that were on their way when the program last ended. Throws RunTimeError.
void MarkOutboxSent(SyncRecords& records, Outbox& outbox);

/// Sends what waits in the outbox, then the pending rows of each table. What does not arrive stays in the
/// outbox; the rows lose their flags either way. Throws RunTimeError when records or files fail.
/// @param announce called before each table with the detail for the progress box
void UploadPending(Program& program, SyncRecords& records, Outbox& outbox,
                   const std::function<void(const std::string&)>& announce);

}  // namespace marovane
