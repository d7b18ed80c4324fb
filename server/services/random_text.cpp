#include "server/services/random_text.h"

#include <sodium.h>

#include <stdexcept>
#include <string_view>

namespace server {
namespace {

std::string Draw(std::string_view alphabet, std::size_t length) {
  if (sodium_init() < 0) throw std::runtime_error("the system gives no random numbers");
  std::string text;
  for (std::size_t i = 0; i < length; ++i) {
    text += alphabet[randombytes_uniform(static_cast<std::uint32_t>(alphabet.size()))];
  }
  return text;
}

}  // namespace

std::string RandomHex(std::size_t bytes) { return Draw("0123456789abcdef", 2 * bytes); }

std::string RandomDigits(std::size_t length) { return Draw("123456789", 1) + Draw("0123456789", length - 1); }

std::string RandomAlphanumeric(std::size_t length) {
  return Draw("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", length);
}

}  // namespace server
