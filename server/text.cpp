#include "server/text.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>

#include "base/utf8.h"

namespace marovane {
namespace {

class Big5Writer {
 public:
  Big5Writer() : handle_(iconv_open("CP950", "UTF-8")) {}
  ~Big5Writer() {
    if (Usable()) iconv_close(handle_);
  }
  Big5Writer(const Big5Writer&) = delete;
  Big5Writer& operator=(const Big5Writer&) = delete;

  std::string Write(std::string character) {
    char bytes[4];
    char* in = character.data();
    char* out = bytes;
    std::size_t inLeft = character.size();
    std::size_t outLeft = sizeof bytes;
    if (!Usable() || iconv(handle_, &in, &inLeft, &out, &outLeft) != 0) return "?";
    return {bytes, sizeof bytes - outLeft};
  }

 private:
  bool Usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t handle_;
};

}  // namespace

std::string FromBig5(std::string_view bytes) {
  const iconv_t handle = iconv_open("UTF-8", "CP950");
  std::string text;
  std::string rest(bytes);
  char* in = rest.data();
  std::size_t inLeft = rest.size();
  while (handle != reinterpret_cast<iconv_t>(-1) && inLeft > 0) {
    char converted[256];
    char* out = converted;
    std::size_t outLeft = sizeof converted;
    const bool isBad =
        iconv(handle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1) && errno != E2BIG;
    text.append(converted, sizeof converted - outLeft);
    if (!isBad) continue;
    text += '?';
    ++in;
    --inLeft;
  }
  if (handle != reinterpret_cast<iconv_t>(-1)) iconv_close(handle);
  return text;
}

std::string ToBig5(std::string_view utf8) {
  if (std::all_of(utf8.begin(), utf8.end(), [](unsigned char byte) { return byte < 0x80; })) {
    return std::string(utf8);
  }
  Big5Writer writer;
  std::string bytes;
  for (std::size_t at = 0; at < utf8.size();) {
    const base::Utf8Character character = base::NextUtf8(utf8, at);
    bytes += character.valid ? writer.Write(std::string(utf8.substr(at, character.length))) : "?";
    at += character.length;
  }
  return bytes;
}

}  // namespace marovane
