#include "wordhelper/user_act.h"

#include "core/program.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "platform/run_time_error.h"

void UpdateUserAct(Program& program, const std::string& account, const std::string& act) {
  if (!IsServerOnline(program)) return;
  try {
    PostForm(program, program.app.gServerUrlRoot + "p_update_useract.asp",
             std::string(kAccessKey) + "&pno=" + CleanAccountNo(account) + "&act=" + act);
  } catch (const RunTimeError&) {
    // The count of uses must not cost the learner the answer.
  }
}
