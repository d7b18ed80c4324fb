// The exchange with the web engine, through `p_passWebEngine.asp`.
#pragma once

#include <optional>
#include <string>

#include "checking/engine_answer.h"

class FrmMain;

/// Checks the sentence of the input box with the allotted web engine and records the verdict. Throws
/// RunTimeError for a broken transfer and a failing record.
void PassStringToEngineWeb(FrmMain& frmMain);

/// Body of the request for one sentence.
std::string EngineRequestBody(const std::string& accountNo, const std::string& runCode,
                              const std::string& sentence);

/// The answer in a reply; nothing when it is none. Of an unknown kind of answer all fields are empty.
std::optional<EngineAnswer> ParseEngineReply(const std::string& reply);
