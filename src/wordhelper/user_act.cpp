#include "wordhelper/user_act.h"

#include "core/program.h"
#include "core/server_access.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"
#include "protocol/form.h"
#include "protocol/pages.h"

void UpdateUserAct(Program& program, const std::string& account, const std::string& act) {
  if (!IsServerOnline(program)) return;
  try {
    PostForm(program, program.app.gServerUrlRoot + protocol::page::kUserAct,
             protocol::PlainBody({{"pno", protocol::CleanAccount(account)}, {"act", act}}));
  } catch (const RunTimeError&) {
    // The count of uses must not cost the learner the answer.
  }
}
