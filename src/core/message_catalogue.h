// The texts of all messages, by number.
#pragma once

#include <string>
#include <string_view>

/// Text of a message, "" for an unknown number.
std::string MessageText(std::string_view msgId);
/// Text of a progress box, "" for an unknown number.
std::string ProgressText(std::string_view msgId);
