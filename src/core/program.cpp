#include "core/program.h"

#include "core/message.h"

namespace marovane {

Program::Program(Machine& theMachine, InstallationValues values)
    : machine(theMachine),
      installation(std::move(values)),
      frmMessage([this] { return std::make_shared<FrmMessage>(*this); }) {}

Program::~Program() = default;

std::string Program::Version() { return MAROVANE_VERSION; }

}  // namespace marovane
