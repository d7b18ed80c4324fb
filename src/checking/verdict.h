// What is done with an engine's answer: the record, the verdict, the colour of the input.
#pragma once

#include <string>

#include "core/engine_exchange.h"
#include "core/resume_next.h"

namespace marovane {

class FrmMain;

enum class EngineKind { kLocal, kWeb };

/// The end of a check, as steps in their order. The arguments must live until the steps have run.
Steps VerdictSteps(FrmMain& frmMain, const std::string& sentence, const protocol::CheckReply& answer,
                   EngineKind kind);

}  // namespace marovane
