// A question about one sentence, and what the check engine says.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace protocol {

/// The field of the sentence, which runs to the end of the body.
inline constexpr const char* kSentenceField = "s";
/// Bytes of the longest sentence that a server judges.
inline constexpr std::size_t kLongestSentence = 2000;

/// The body of a request to check a sentence. Servers of other makers want more than the sentence.
std::string EncodeCheck(const std::string& account, std::string_view runCode, const std::string& sentence);

struct CheckReply {
  std::string findMistake;  ///< "0" right, "1" errors, "2" points to watch; another word is no verdict
  std::string errcode;      ///< at most six characters
  std::string sentence;     ///< when something was found: the sentence with its faulty parts marked
  std::string pagePath;     ///< result page: a file (local), or relative to the engine's root (web)
  std::string colSuggestion;
  std::string synSuggestion;

  bool IsRight() const { return findMistake == "0"; }
  bool operator==(const CheckReply&) const = default;
};

/// What follows "OK_" in a reply. "#" parts the fields: within one it becomes its full-width twin.
std::string EncodeCheckReply(const CheckReply& reply);
/// Of an unknown kind of reply all fields are empty.
CheckReply ParseCheckReply(std::string_view text);

/// The code of an error: without "!", up to the first "#", trimmed, at most six characters.
std::string ErrorCodeOf(std::string_view text);

}  // namespace protocol
