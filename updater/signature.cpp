#include "updater/signature.h"

#include <sodium.h>

#include <array>
#include <stdexcept>
#include <vector>

#include "base/sha256.h"
#include "base/text.h"
#include "updater/refusal.h"

namespace updater {

namespace {

constexpr std::string_view kWord = "ed25519 ";

using Bytes = std::vector<unsigned char>;

const unsigned char* Unsigned(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

template <std::size_t size>
std::string Hex(const std::array<unsigned char, size>& bytes) {
  return base::HexOf({reinterpret_cast<const char*>(bytes.data()), size});
}

// Empty for what is not exactly so many bytes in hexadecimal digits.
Bytes FromHex(std::string_view digits, std::size_t size) {
  Bytes bytes(size);
  std::size_t read = 0;
  const char* end = nullptr;
  const bool isHex =
      sodium_hex2bin(bytes.data(), size, digits.data(), digits.size(), nullptr, &read, &end) == 0;
  if (!isHex || read != size || end != digits.data() + digits.size()) bytes.clear();
  return bytes;
}

}  // namespace

KeyPair MakeKeyPair() {
  std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> open{};
  std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret{};
  crypto_sign_keypair(open.data(), secret.data());
  return {Hex(secret), Hex(open)};
}

std::string Signed(std::string_view list, std::string_view secretKey) {
  const Bytes key = FromHex(base::Trimmed(secretKey, base::kWhiteSpace), crypto_sign_SECRETKEYBYTES);
  if (key.empty()) throw std::runtime_error("this is no secret key");
  std::array<unsigned char, crypto_sign_BYTES> signature{};
  crypto_sign_detached(signature.data(), nullptr, Unsigned(list), list.size(), key.data());
  return std::string(kWord) + Hex(signature) + "\n" + std::string(list);
}

std::string_view Verified(std::string_view published, std::string_view openKey) {
  const Bytes key = FromHex(base::Trimmed(openKey, base::kWhiteSpace), crypto_sign_PUBLICKEYBYTES);
  if (key.empty()) throw Refusal("這份程式沒有驗證更新用的金鑰，無法確定更新檔的來源，沒有更新任何檔案。");
  const auto end = published.find('\n');
  if (!published.starts_with(kWord) || end == std::string_view::npos) {
    throw Refusal("更新清單沒有簽章，沒有更新任何檔案。");
  }
  const Bytes signature = FromHex(published.substr(kWord.size(), end - kWord.size()), crypto_sign_BYTES);
  const std::string_view list = published.substr(end + 1);
  if (signature.empty() ||
      crypto_sign_verify_detached(signature.data(), Unsigned(list), list.size(), key.data()) != 0) {
    throw Refusal("更新清單的簽章不正確，可能遭人竄改，沒有更新任何檔案。");
  }
  return list;
}

}  // namespace updater
