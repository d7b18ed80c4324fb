// Small routines on texts and ids that many windows share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/day.h"

namespace marovane {

struct Program;

/// A new id of a row or a file (protocol/unique_id.h).
std::string MakeRecId(Program& program);

/// A whole number with a comma between thousands, as "1,208".
std::string FormatNumber(std::int64_t number);
/// The title, or "我的短文" with the day when it is empty.
std::string DefaultEssayTitle(const std::string& title, base::LocalTime now);

/// True when every character's code lies in 32..122.
bool IsPlainAscii(std::string_view text);
bool IsValidEmail(std::string_view text);

/// Filters a KeyPress code; 0 swallows the key. Passes Enter, Backspace, paste, digits, letters, "-", ".",
/// "_", and the blank when it is allowed.
/// @param caseMode "UPPER", "LOWER", or anything else for letters as they are.
int FilterKeyAscii(int keyAscii, std::string_view caseMode, bool allowBlank);
/// Filters a key code of the essay's input box; 0 swallows the key.
int FilterEssayKeyCode(int keyCode);

}  // namespace marovane
