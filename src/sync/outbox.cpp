#include "sync/outbox.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <optional>

#include "base/digest.h"
#include "base/text.h"
#include "core/program.h"
#include "core/records_place.h"
#include "core/text_utility.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"
#include "protocol/form.h"

namespace marovane {

namespace {

constexpr const char* kPostEnding = ".post";
// First line of a file, before the length and the hash of all that follows it.
constexpr std::string_view kFormat = "marovane post 2 ";

std::optional<std::string> PopLine(std::string& text) {
  const auto end = text.find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string line = text.substr(0, end);
  text.erase(0, end + 1);
  return line;
}

std::string Seal(std::string_view content) {
  base::RowHash hash;
  hash.Add(content);
  return fmt::format("{}{} {:016x}", kFormat, content.size(), hash.Value());
}

std::string ContentOf(const Post& post) {
  return fmt::format("{}\n{}\n{}\n{}\n{}\n{}\n{}\n{}", post.id, post.account, post.kept,
                     static_cast<int>(post.kind), post.isMarked ? 1 : 0, fmt::join(post.newIds, " "),
                     fmt::join(post.deletedIds, " "), post.body);
}

// The lines of both formats, without those that only the newer one has.
bool ReadLines(std::string& text, const std::vector<std::string*>& lines) {
  for (std::string* const line : lines) {
    auto read = PopLine(text);
    if (!read) return false;
    *line = std::move(*read);
  }
  return true;
}

std::optional<Post> Finish(Post post, const std::string& kind, const std::string& newIds,
                           const std::string& deletedIds, std::string body) {
  if (kind.size() != 1 || kind[0] < '0' || kind[0] > '2') return std::nullopt;
  post.kind = static_cast<protocol::RecordKind>(kind[0] - '0');
  post.newIds = base::Split(newIds, " ");
  post.deletedIds = base::Split(deletedIds, " ");
  for (auto* ids : {&post.newIds, &post.deletedIds}) std::erase(*ids, "");
  post.body = std::move(body);
  return post;
}

// As older versions wrote it: the account is in the body alone, and the ids are gone when the rows are
// marked.
std::optional<Post> ReadOlder(std::string text) {
  Post post;
  std::string kind, newIds, deletedIds;
  if (!ReadLines(text, {&post.id, &post.kept, &kind, &newIds, &deletedIds})) return std::nullopt;
  post.account = protocol::Form::Browser(text).Find("pno").value_or("");
  post.isMarked = newIds.empty() && deletedIds.empty();
  return Finish(std::move(post), kind, newIds, deletedIds, std::move(text));
}

std::optional<Post> Read(std::string text) {
  if (!text.starts_with(kFormat)) return ReadOlder(std::move(text));
  const auto seal = PopLine(text);
  if (!seal || *seal != Seal(text)) return std::nullopt;
  Post post;
  std::string kind, isMarked, newIds, deletedIds;
  if (!ReadLines(text, {&post.id, &post.account, &post.kept, &kind, &isMarked, &newIds, &deletedIds})) {
    return std::nullopt;
  }
  post.isMarked = isMarked == "1";
  return Finish(std::move(post), kind, newIds, deletedIds, std::move(text));
}

}  // namespace

base::Files::Path OutboxFolder(const Program& program) {
  return base::Files::Path(RecordsFolder(program)) / "outbox";
}

std::optional<Post> ReadPost(const std::string& name, std::string bytes) {
  return name.ends_with(kPostEnding) ? Read(std::move(bytes)) : std::nullopt;
}

std::vector<KeptPost> Outbox::Posts() {
  const std::string own = protocol::CleanAccount(program_.app.gAccountNo);
  std::vector<KeptPost> posts;
  for (const auto& name : program_.machine.files.List(Folder())) {
    if (!name.ends_with(kPostEnding)) continue;
    const auto bytes = ReadUnlessSent(name);
    if (!bytes) continue;
    auto post = ReadPost(name, *bytes);
    if (!post) {
      SetAside(name, "damaged");
    } else if (post->account.empty() || protocol::CleanAccount(post->account) == own) {
      posts.push_back({name, std::move(*post)});
    }
  }
  return posts;
}

// Nothing when another process has sent the post meanwhile. What cannot be read is as good as empty.
std::optional<std::string> Outbox::ReadUnlessSent(const std::string& name) const {
  try {
    return program_.machine.files.Read(Folder() / name);
  } catch (const base::FileError& error) {
    if (error.code == std::errc::no_such_file_or_directory) return std::nullopt;
    return "";
  }
}

void Outbox::SetAside(const std::string& name, const char* folderName) {
  const auto folder = Folder() / folderName;
  program_.machine.files.CreateFolder(folder, true);
  program_.machine.files.Rename(Folder() / name, folder / name);
}

// The random id keeps two processes from writing the same file.
std::string Outbox::Keep(const Post& post) {
  program_.machine.files.CreateFolder(Folder(), true);
  std::string name = fmt::format("{}-{}{}", MakeRecId(program_), post.id, kPostEnding);
  Write(name, post);
  return name;
}

void Outbox::NoteMarked(const std::string& name, Post post) {
  post.isMarked = true;
  Write(name, post);
}

void Outbox::Write(const std::string& name, const Post& post) {
  const std::string content = ContentOf(post);
  base::RewriteFile(program_.machine.files, Folder() / name, fmt::format("{}\n{}", Seal(content), content),
                    true);
}

void Outbox::Remove(const std::string& name) {
  try {
    program_.machine.files.Delete(Folder() / name);
  } catch (const base::FileError& error) {
    if (error.code != std::errc::no_such_file_or_directory) throw;  // another process has sent it too
  }
}

}  // namespace marovane
