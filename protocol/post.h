// The posts that bring new and deleted records to the server.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "protocol/form.h"
#include "protocol/rows.h"

namespace protocol {

struct PostedRow {
  bool isDeletion = false;
  std::string id;  ///< its own among all rows of the account (IsUniqueId); "" for one that has none
  Row row;         ///< of a deletion that has an id, it may be empty
  /// Of a deletion without an id: rows equal to this one that the learner has kept.
  std::size_t kept = 0;

  bool operator==(const PostedRow&) const = default;
};

/// Appends the rows, trimmed and cleaned, to the body of a browser's form. What they have kept goes into a
/// header.
void AddRows(std::string& body, const std::vector<PostedRow>& rows);
/// What becomes of rows that are not in their form: a server refuses the post, and who reads his own old post
/// takes what there is.
enum class Reading { kStrict, kLenient };

/// The rows of a form. A day that cannot be read becomes `today` (ISO text): better a wrong day than a lost
/// sentence. Throws Refusal: kUnknownKind, kBadText (also of a new row that is not well-formed).
std::vector<PostedRow> ParseRows(const Form& form, const std::string& today,
                                 Reading reading = Reading::kStrict);

/// Notes in the rows what the header of an older program says. "3:1 17:2": of the third row one equal row was
/// kept, of the seventeenth two.
void ParseKept(std::string_view header, std::vector<PostedRow>& rows);

}  // namespace protocol
