// Posts that may not have arrived yet.
#pragma once

#include <optional>
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
  std::string id;       ///< distinguishes it from every other post of the account
  std::string account;  ///< whose rows they are
  std::string kept;     ///< "" but for posts of older versions: a header that belongs to them
  std::string body;     ///< application/x-www-form-urlencoded, UTF-8
  protocol::RecordKind kind = protocol::RecordKind::kRight;
  bool isMarked = false;  ///< its rows have lost their flags
  std::vector<std::string> newIds,
      deletedIds;  ///< local keys of the rows; none in older versions' marked posts
};

/// A post from a file of the outbox. Nothing for a damaged one, and for a file of another kind.
/// @param name of the file
std::optional<Post> ReadPost(const std::string& name, std::string bytes);

struct KeptPost {
  std::string name;  ///< of its file
  Post post;
};

/// One file per post in `outbox/`. A post is there from before its rows lose their flags until the server has
/// confirmed it; so whenever the program dies, the file says what is left to do.
/// Every procedure throws RunTimeError when a file cannot be used.
class Outbox {
 public:
  explicit Outbox(Program& program) : program_(program) {}

  bool IsEmpty() { return Posts().empty(); }
  /// Those of the present account, the oldest first. A file that is damaged or cannot be read is set
  /// aside in the folder `damaged`: a reload finds that the server lacks its rows.
  std::vector<KeptPost> Posts();
  /// Stores a post and returns its name.
  std::string Keep(const Post& post);
  /// Notes that the rows of a post have lost their flags.
  void NoteMarked(const std::string& name, Post post);
  void Remove(const std::string& name);
  /// Moves a file into a folder within the outbox, where nobody looks for posts.
  void SetAside(const std::string& name, const char* folderName);

 private:
  base::Files::Path Folder() const { return OutboxFolder(program_); }
  void Write(const std::string& name, const Post& post);
  std::optional<std::string> ReadUnlessSent(const std::string& name) const;

  Program& program_;
};

}  // namespace marovane
