// UTF-8 to CP950 with numeric references for what the code page lacks.
#include <fmt/format.h>
#include <iconv.h>

#include "base/utf8.h"
#include "engine/tolvex.h"

namespace tolvex {
namespace {

class Converter {
 public:
  Converter() : handle_(iconv_open("CP950", "UTF-8")) {}
  ~Converter() {
    if (Usable()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// One character's bytes in CP950; empty when it has none.
  std::string Convert(std::string_view character) {
    if (!Usable()) return {};
    char in[8] = {};
    char out[8] = {};
    character.copy(in, sizeof in - 1);
    char* from = in;
    char* to = out;
    std::size_t inLeft = character.size();
    std::size_t outLeft = sizeof out;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &inLeft, &to, &outLeft) != 0) return {};
    return {out, sizeof out - outLeft};
  }

 private:
  bool Usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t handle_;
};

}  // namespace

std::string PageInBig5(std::string_view utf8Page) {
  Converter converter;
  std::string page;
  page.reserve(utf8Page.size());
  for (std::size_t at = 0; at < utf8Page.size();) {
    const base::Utf8Character c = base::NextUtf8(utf8Page, at);
    if (c.codePoint < 0x80) {
      page += static_cast<char>(c.codePoint);
    } else {
      const std::string bytes = c.valid ? converter.Convert(utf8Page.substr(at, c.length)) : std::string();
      page += bytes.empty() ? fmt::format("&#{};", static_cast<unsigned>(c.codePoint)) : bytes;
    }
    at += c.length;
  }
  return page;
}

}  // namespace tolvex
