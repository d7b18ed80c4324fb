// Where updates come from.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace updater {

/// Takes the bytes as they come.
using Sink = std::function<void(std::string_view bytes)>;

class Source {
 public:
  virtual ~Source() = default;
  /// Hands over what is under a name. Throws Refusal when there is nothing, when it cannot be read to its
  /// end, or when it is longer than `most` bytes. What the sink throws comes through.
  virtual void Fetch(const std::string& name, std::uint64_t most, const Sink& sink) = 0;
};

/// @param host a host, with port and path where there are any, which is asked over HTTPS (over HTTP on this
/// computer itself); or the path of a folder, which begins with "/"
std::unique_ptr<Source> OpenSource(const std::string& host);

/// The address that a host means; ends in "/".
std::string AddressOf(const std::string& host);

}  // namespace updater
