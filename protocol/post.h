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
  Row row;
  /// Of a deletion: rows equal to this one that the learner has kept.
  std::size_t kept = 0;

  bool operator==(const PostedRow&) const = default;
};

/// Appends the rows, trimmed and cleaned, to the body of a browser's form. What they have kept goes into a
/// header.
void AddRows(std::string& body, const std::vector<PostedRow>& rows);
/// The rows of a form. A day that cannot be read becomes `today` (ISO text): better a wrong day than a lost
/// sentence. Throws Refusal: kUnknownKind, kBadText (also of a new row that is not well-formed).
std::vector<PostedRow> ParseRows(const Form& form, const std::string& today);

/// "3:1 17:2": of the third row one equal row was kept, of the seventeenth two. A list that is longer than a
/// header may be is cut: only equal rows are in it.
std::string EncodeKept(const std::vector<PostedRow>& rows);
/// Notes in the rows what the header says.
void ParseKept(std::string_view header, std::vector<PostedRow>& rows);

}  // namespace protocol
