// What goes with a request besides its fields.
#pragma once

namespace protocol {

/// The value of the field "key", without which hardly a page answers.
inline constexpr const char* kAccessKey = "zorbelquinter";

/// The content type of a form as a browser posts it.
inline constexpr const char* kFormType = "application/x-www-form-urlencoded";

namespace header {

/// Of a post of records: distinguishes it from every other post of the account, so that none is stored twice.
inline constexpr const char* kPostId = "Idempotency-Key";
/// Of a post of records by older programs: see `ParseKept` (post.h).
inline constexpr const char* kKept = "Marovane-Kept";
/// Of a comparison: the result of `EncodeRecordsSince` (digest.h).
inline constexpr const char* kRecords = "Marovane-Rows";
/// Of a comparison: the result of `EncodeSeen` (server_state.h).
inline constexpr const char* kSeen = "Marovane-Seen";
/// Of a learner's request: proves that the account is the caller's. Of the reply to a login: what to send as
/// such from then on.
inline constexpr const char* kToken = "Marovane-Token";
/// Of a request that merges an older account: the token of that one.
inline constexpr const char* kOldToken = "Marovane-Old-Token";

}  // namespace header
}  // namespace protocol
