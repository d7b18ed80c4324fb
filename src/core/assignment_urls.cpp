#include "core/assignment_urls.h"

#include "core/program.h"
#include "core/text_utility.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "protocol/form.h"
#include "protocol/pages.h"

namespace marovane {

std::string QuestionUrl(const Program& program, const std::string& workId) {
  const auto& app = program.app;
  return app.gServerUrlRoot + protocol::page::kWork + "?" +
         protocol::PlainBody({{"pno", app.gAccountNo},
                              {"workId", workId},
                              {"mode", "GETHTM"},
                              {"cpno", app.gTeacherAccount}});
}

std::string TeacherCommentUrl(Program& program, const std::string& workId) {
  auto& app = program.app;
  return app.gServerUrlRoot + protocol::page::kTeacherComment +
         "?tid=" + MakeRecId(app, program.machine.loop.Now()) + "&" +
         protocol::PlainBody({{"pno", app.gAccountNo}, {"workId", workId}});
}

}  // namespace marovane
