// The record database: one typed procedure per statement.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/database.h"
#include "base/day.h"
#include "core/records_place.h"

namespace marovane {

struct Program;

/// A sentence found right. Texts are UTF-8; the apostrophe may be either.
struct OkSentence {
  std::string sId;
  std::string sentence;
  base::Day sDate;
  std::string upload = "N";
  std::string essayId = "0";
  std::string essaySId = "0";
  std::string haveHtm = "N";
};

/// A sentence with errors or points to watch, its faulty parts between pairs of "*".
struct ErrSentence {
  std::string id;
  std::string sentence;
  std::string errcode = "0";
  base::Day sDate;
  std::string upload = "N";
  std::string essayId = "0";
  std::string essaySId = "0";
  std::string haveHtm = "N";
};

/// Opens `Marovane.mdb` at the first statement. Every procedure throws RunTimeError when its statement fails.
class RecordDb {
 public:
  explicit RecordDb(Program& program) : program_(program) {}

  void InsertOkSentence(const OkSentence& row);
  void InsertErrSentence(const ErrSentence& row);

  /// The tally of error codes.
  int CountMistakes(const std::string& errcode);
  void InsertMistake(const std::string& errcode);
  void RaiseMistake(const std::string& errcode);
  /// Counts one more mistake of the code.
  void TallyMistake(const std::string& errcode);

  /// Days that have sentences which are not deleted, the latest first.
  std::vector<base::Day> Days();
  /// Sentences of a day that are not deleted, the oldest first.
  std::vector<OkSentence> OkSentencesOf(base::Day day);
  std::vector<ErrSentence> ErrSentencesOf(base::Day day);
  /// Stored texts of the sentences with an error code that are not deleted.
  std::vector<std::string> SentencesWithCode(const std::string& errcode);
  /// Number of faulty sentences whose code begins with the prefix, those of essays and deleted ones included.
  int CountErrorsLike(const std::string& prefix);
  /// Number of those with exactly this code.
  int CountErrorsWith(const std::string& errcode);

  /// True when there are more right or more faulty sentences than this, whatever their flags.
  bool HasMoreSentencesThan(int many);
  /// True when a sentence or an essay has not been uploaded.
  bool HasNewRows();

  /// The only connection, for the statements of the other files of this room.
  base::Database& Db();
  void Close() { db_.reset(); }

 private:
  Program& program_;
  std::unique_ptr<base::Database> db_;
};

/// A sentence from a row with all columns of its table. Throws RunTimeError when its day is none.
OkSentence OkSentenceFrom(const base::DbRow& row);
ErrSentence ErrSentenceFrom(const base::DbRow& row);

/// A stored text with plain apostrophes, as the user and the engine know it.
std::string PlainApostrophes(const std::string& stored);
/// A text as it is stored: without plain apostrophes.
std::string StoredText(const std::string& text);
/// A stored day. Throws RunTimeError for another text.
base::Day DayFromIso(const std::string& iso);

}  // namespace marovane
