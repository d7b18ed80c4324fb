// Passwords as they are stored: argon2id (RFC 9106) in the text form of libsodium.
#pragma once

#include <string>

namespace server {

/// A salted hash. Costs 19 MiB and two passes, the least that OWASP's password storage cheat sheet asks for.
std::string HashPassword(const std::string& password);
bool PasswordFits(const std::string& password, const std::string& hash);

}  // namespace server
