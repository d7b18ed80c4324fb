// Tells the server that a part of the word helper was used.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// Posts one small notice; whatever comes of it, and whether it arrives, does not matter to the caller.
/// @param account number; "-" and blanks are removed
/// @param act     a value of gSuggestMode: "collo", "similar", "similar_2", "chn2eng" or "eng2xpl"
void UpdateUserAct(Program& program, const std::string& account, const std::string& act);

}  // namespace marovane
