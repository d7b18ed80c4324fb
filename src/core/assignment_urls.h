// Addresses of the server's pages about a teacher's assignments, as a browser shows them.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// The question of an assignment.
std::string QuestionUrl(const Program& program, const std::string& workId);
/// The teacher's comment on what was handed in. Each call gives another address, so that no old copy is
/// shown.
std::string TeacherCommentUrl(Program& program, const std::string& workId);

}  // namespace marovane
