// Posts that may not have arrived yet.
#pragma once

#include <string>
#include <vector>

#include "base/files.h"
#include "protocol/rows.h"

namespace marovane {

struct Program;

/// `outbox/` beside the record database.
base::Files::Path OutboxFolder(const Program& program);

/// One upload as it goes out, and the rows in it.
struct Post {
  std::string id;    ///< distinguishes it from every other post of the account
  std::string kept;  ///< "3:1 17:2": one row equal to the third was kept, and two equal to the seventeenth
  std::string body;  ///< application/x-www-form-urlencoded, UTF-8
  protocol::RecordKind kind = protocol::RecordKind::kRight;
  std::vector<std::string> newIds, deletedIds;  ///< local keys of the rows that still have their flags
};

/// One file per post in `outbox/`. A post is there from before its rows lose their flags until the server has
/// confirmed it; so whenever the program dies, the file says what is left to do.
/// Every procedure throws RunTimeError when a file cannot be used.
class Outbox {
 public:
  explicit Outbox(Program& program) : program_(program) {}

  bool IsEmpty() const;
  /// Oldest first.
  std::vector<std::string> Names() const;
  Post Read(const std::string& name) const;
  /// Stores a post and returns its name.
  std::string Keep(const Post& post);
  /// Notes that the rows of a post have lost their flags.
  void NoteMarked(const std::string& name, Post post);
  void Remove(const std::string& name);

 private:
  base::Files::Path Folder() const { return OutboxFolder(program_); }
  void Write(const std::string& name, const Post& post);

  Program& program_;
};

}  // namespace marovane
