#include "essay/assignments.h"

#include <fmt/format.h>

#include "core/program.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "platform/run_time_error.h"

namespace {

constexpr std::string_view kOk = "OK";

Assignment AssignmentFrom(const std::string& record) {
  const auto fields = Split(record, "#");
  const auto field = [&](std::size_t at) { return at < fields.size() ? fields[at] : std::string(); };
  return {field(0), field(1) == "Y", field(2), field(3), field(4), field(5) == "Y"};
}

std::string AskServer(Program& program) {
  const auto& app = program.app;
  try {
    return PostForm(
        program, app.gServerUrlRoot + "p_mrv_get_essay_work.asp",
        fmt::format("{}&pno={}&mode=GETLST&cpno={}", kAccessKey, app.gAccountNo, app.gTeacherAccount));
  } catch (const RunTimeError&) {
    return "";
  }
}

}  // namespace

std::vector<Assignment> ParseAssignments(std::string_view reply) {
  std::vector<Assignment> assignments;
  if (!reply.starts_with(kOk)) return assignments;
  for (const auto& record : Split(Replace(reply, "OK_", ""), "<@>")) {
    Assignment assignment = AssignmentFrom(record);
    if (assignment.workId.empty() || assignment.title.empty()) continue;
    assignments.push_back(std::move(assignment));
  }
  return assignments;
}

std::vector<Assignment> FetchAssignments(Program& program) {
  const std::string reply = AskServer(program);
  program.app.gWorkListOk = reply.starts_with(kOk);
  return ParseAssignments(reply);
}
