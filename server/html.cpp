#include "server/html.h"

namespace marovane {

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char sign : text) {
    switch (sign) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      case '\t':
      case '\r':
      case '\n':
        escaped += sign;
        break;
      default:
        if (static_cast<unsigned char>(sign) < 0x20 || sign == 0x7F) {
          escaped += "\xEF\xBF\xBD";
        } else {
          escaped += sign;
        }
    }
  }
  return escaped;
}

}  // namespace marovane
