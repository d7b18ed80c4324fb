// How often errors occur in the recorded sentences.
#pragma once

#include <string>

namespace marovane {

class RecordDb;

/// Counts all faulty sentences, those of essays and deleted ones included. Throws RunTimeError.
class ErrorCounts {
 public:
  explicit ErrorCounts(RecordDb& records) : records_(records) {}

  /// Sentences whose code begins with the prefix.
  int CountLike(const std::string& prefix);
  /// Sentences with this code.
  int CountWith(const std::string& errcode);

 private:
  RecordDb& records_;
};

}  // namespace marovane
