#include "essay/assignments.h"

#include <optional>

#include "base/text.h"
#include "core/program.h"
#include "core/server_access.h"
#include "protocol/pages.h"
#include "protocol/record_form.h"

namespace marovane {

namespace {

constexpr std::string_view kOk = "OK";

// Up to the title a record has all its fields; nothing for one that is cut short or has no number.
std::optional<Assignment> AssignmentFrom(const std::string& record) {
  constexpr std::size_t kFieldsAtLeast = 4;
  const auto fields = base::Split(record, "#");
  if (fields.size() < kFieldsAtLeast || protocol::CleanRecordId(fields[0]).empty()) return std::nullopt;
  const auto field = [&](std::size_t at) { return at < fields.size() ? fields[at] : std::string(); };
  return Assignment{
      protocol::CleanRecordId(field(0)), field(1) == "Y", field(2), field(3), field(4), field(5) == "Y"};
}

}  // namespace

std::vector<Assignment> ParseAssignments(std::string_view reply) {
  std::vector<Assignment> assignments;
  if (!reply.starts_with(kOk)) return assignments;
  for (const auto& record : base::Split(base::Replace(reply, "OK_", ""), "<@>")) {
    if (auto assignment = AssignmentFrom(record)) assignments.push_back(std::move(*assignment));
  }
  return assignments;
}

std::vector<Assignment> FetchAssignments(Program& program) {
  auto& app = program.app;
  const std::string reply =
      TryPost(program, app.gServerUrlRoot + protocol::page::kWork,
              {{"pno", app.gAccountNo}, {"mode", "GETLST"}, {"cpno", app.gTeacherAccount}});
  app.gWorkListOk = reply.starts_with(kOk);
  return ParseAssignments(reply);
}

}  // namespace marovane
