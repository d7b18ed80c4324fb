// Whose request it is, for counting.
#pragma once

#include <httplib.h>

#include <string>

namespace server {

/// @param isBehindProxy takes the address from X-Real-IP
inline std::string CallerAddress(const httplib::Request& request, bool isBehindProxy) {
  constexpr const char* kRealAddress = "X-Real-IP";
  const bool isNamed = isBehindProxy && request.has_header(kRealAddress);
  return isNamed ? request.get_header_value(kRealAddress) : request.remote_addr;
}

}  // namespace server
