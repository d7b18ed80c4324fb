// Which texts can be walked.
#pragma once

#include <string>

/// Number of the message that refuses a text, "" for one that can be walked: it is empty, has no end mark at
/// its end, holds signs that no engine takes, or is too long.
std::string RefusalOf(const std::string& text);

/// The same for a text that a correction has led to, whose signs the user answers for.
std::string RefusalOfCorrected(const std::string& text);
