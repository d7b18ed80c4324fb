// Errors go to standard error, one line each; nothing else is logged.
#pragma once

#include <fmt/format.h>

#include <cstdio>

namespace server {

template <typename... Arguments>
void LogError(fmt::format_string<Arguments...> text, Arguments&&... arguments) {
  fmt::print(stderr, "marovane-server: {}\n", fmt::format(text, std::forward<Arguments>(arguments)...));
}

}  // namespace server
