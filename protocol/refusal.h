// The words that refuse a request. docs/protocol.md lists which page says which.
#pragma once

#include <string_view>

#include "base/error.h"

namespace protocol {

/// Ends the work on a request. Its text is the reply's word.
class Refusal : public base::Error {
 public:
  using Error::Error;
};

namespace refusal {

// On any page.
inline constexpr const char* kWrongKey = "ERR_WRONG_KEY";
inline constexpr const char* kMissingField = "ERR_MISSING_FIELD";
inline constexpr const char* kTooLong = "ERR_TOO_LONG";
inline constexpr const char* kBadText = "ERR_BAD_TEXT";
inline constexpr const char* kServer = "ERR_SERVER";

// Of accounts.
inline constexpr const char* kBadAccount = "ERR_INVAILD_ACCOUNT";
inline constexpr const char* kNotFound = "ERR_NOTFOUND";
inline constexpr const char* kWrongPassword = "ERR_WRONG_PASSWORD";
/// The request has no token that is the account's.
inline constexpr const char* kLogin = "ERR_LOGIN";
inline constexpr const char* kTryLater = "ERR_TRY_LATER";
inline constexpr const char* kClosed = "ERR_CLOSED";
inline constexpr const char* kWrongEmail = "ERR_WRONG_EMAIL";

// Of what a page does not know.
inline constexpr const char* kUnknownMethod = "ERR_UNKNOWN_METHOD";
inline constexpr const char* kUnknownAct = "ERR_UNKNOWN_ACT";
inline constexpr const char* kUnknownType = "ERR_UNKNOWN_TYPE";
inline constexpr const char* kUnknownLanguage = "ERR_UNKNOWN_LANGUAGE";
inline constexpr const char* kUnknownKind = "ERR_UNKNOWN_KIND";
inline constexpr const char* kUnknownStream = "ERR_UNKNOWN_STREAM";
inline constexpr const char* kBadDigest = "ERR_BAD_DIGEST";
inline constexpr const char* kNoNews = "ERR_NONEWS";

// Of the engine, whose data is missing or damaged.
inline constexpr const char* kEngine = "ERR_ENGINE";

// Of handing in.
inline constexpr const char* kNoWork = "ERR_NO_WORK";
inline constexpr const char* kNoEssay = "ERR_NO_ESSAY";
inline constexpr const char* kHandedIn = "ERR_HANDED_IN";

/// Said by the program itself when no server answered.
inline constexpr const char* kConnectFailed = "ERR_CONNECT_FAILED";

/// True for a reply that will be the same however often it is asked for: the request itself is refused.
/// kLogin is none: after a login the same request is taken.
bool IsFinal(std::string_view reply);
/// True when it is the account that is refused.
bool IsOfAccount(std::string_view reply);
/// True when it is what a post of records holds that is refused.
bool IsOfRows(std::string_view reply);

}  // namespace refusal
}  // namespace protocol
