#include "core/assignment_urls.h"

#include <fmt/format.h>

#include "core/program.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

std::string QuestionUrl(const Program& program, const std::string& workId) {
  const auto& app = program.app;
  return fmt::format("{}p_mrv_get_essay_work.asp?{}&pno={}&workId={}&mode=GETHTM&cpno={}", app.gServerUrlRoot,
                     kAccessKey, app.gAccountNo, workId, app.gTeacherAccount);
}

std::string TeacherCommentUrl(Program& program, const std::string& workId) {
  auto& app = program.app;
  return fmt::format("{}p_get_essay_work_teacher.asp?tid={}&{}&pno={}&workId={}", app.gServerUrlRoot,
                     MakeRecId(app, program.machine.loop.Now()), kAccessKey, app.gAccountNo, workId);
}
