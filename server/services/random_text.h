// Texts that nobody can guess, from the system's random numbers.
#pragma once

#include <string>

namespace server {

std::string RandomHex(std::size_t bytes);      ///< two digits a byte
std::string RandomDigits(std::size_t length);  ///< the first one is not 0
std::string RandomAlphanumeric(std::size_t length);

}  // namespace server
