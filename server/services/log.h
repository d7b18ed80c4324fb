// Errors go to standard error, one line each; nothing else is logged.
#pragma once

#include <fmt/format.h>

#include <cstdio>
#include <exception>

namespace server {

template <typename... Arguments>
void LogError(fmt::format_string<Arguments...> text, Arguments&&... arguments) {
  fmt::print(stderr, "marovane-server: {}\n", fmt::format(text, std::forward<Arguments>(arguments)...));
}

/// What the loading of the engine or the word bank returns. Its failure is logged and thrown on.
template <typename Load>
auto LoadOrLog(const char* what, const Load& load) try {
  return load();
} catch (const std::exception& error) {
  LogError("the {} cannot be loaded: {}", what, error.what());
  throw;
}

}  // namespace server
