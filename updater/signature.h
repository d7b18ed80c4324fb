// Who made a list, and whether it is still what was made.
#pragma once

#include <string>
#include <string_view>

namespace updater {

struct KeyPair {
  std::string secret;  ///< 128 hexadecimal digits
  std::string open;    ///< 64 hexadecimal digits
};

KeyPair MakeKeyPair();

/// A list with its signature in front. Throws std::runtime_error when the secret key is none.
std::string Signed(std::string_view list, std::string_view secretKey);

/// The list after a signature. Throws Refusal when the signature is missing, or not of the key's owner over
/// these bytes.
/// @param openKey 64 hexadecimal digits; white space around them is passed over
std::string_view Verified(std::string_view published, std::string_view openKey);

}  // namespace updater
