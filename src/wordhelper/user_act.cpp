#include "wordhelper/user_act.h"

#include "core/program.h"
#include "core/server_access.h"
#include "protocol/account.h"
#include "protocol/pages.h"

namespace marovane {

void UpdateUserAct(Program& program, const std::string& account, const std::string& act) {
  AskServer(program, protocol::page::kUserAct, {{"pno", protocol::CleanAccount(account)}, {"act", act}});
}

}  // namespace marovane
