#include "sync/outbox.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "base/text.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "records/record_db.h"

namespace marovane {

namespace {

constexpr const char* kPostEnding = ".post";

std::string PopLine(std::string& text) {
  const auto end = text.find('\n');
  if (end == std::string::npos) throw RunTimeError("a file of the outbox is damaged");
  std::string line = text.substr(0, end);
  text.erase(0, end + 1);
  return line;
}

}  // namespace

base::Files::Path OutboxFolder(const Program& program) {
  return base::Files::Path(ConnectionPath(program.app.gConnRecords)).parent_path() / "outbox";
}

std::vector<std::string> Outbox::Names() const {
  auto names = program_.machine.files.List(Folder());
  std::erase_if(names, [](const auto& name) { return !name.ends_with(kPostEnding); });
  return names;
}

bool Outbox::IsEmpty() const { return Names().empty(); }

Post Outbox::Read(const std::string& name) const {
  std::string text = program_.machine.files.Read(Folder() / name);
  Post post;
  post.id = PopLine(text);
  post.kept = PopLine(text);
  post.kind = static_cast<protocol::RecordKind>(std::clamp(PopLine(text)[0] - '0', 0, 2));
  post.newIds = base::Split(PopLine(text), " ");
  post.deletedIds = base::Split(PopLine(text), " ");
  post.body = std::move(text);
  return post;
}

std::string Outbox::Keep(const Post& post) {
  program_.machine.files.CreateFolder(Folder(), true);
  std::string name = MakeRecId(program_.app, program_.machine.loop.Now()) + kPostEnding;
  Write(name, post);
  return name;
}

void Outbox::NoteMarked(const std::string& name, Post post) {
  post.newIds.clear();
  post.deletedIds.clear();
  Write(name, post);
}

void Outbox::Write(const std::string& name, const Post& post) {
  base::RewriteFile(program_.machine.files, Folder() / name,
                    fmt::format("{}\n{}\n{}\n{}\n{}\n{}", post.id, post.kept, static_cast<int>(post.kind),
                                fmt::join(post.newIds, " "), fmt::join(post.deletedIds, " "), post.body),
                    true);
}

void Outbox::Remove(const std::string& name) { program_.machine.files.Delete(Folder() / name); }

}  // namespace marovane
