#include "essay/archive.h"

#include <fmt/format.h>

#include <cctype>

#include "core/digest.h"
#include "core/program.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "platform/http.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace {

// A field as browsers write it (application/x-www-form-urlencoded), in UTF-8.
std::string FormEncoded(const std::string& text) {
  std::string encoded;
  for (const char sign : text) {
    const auto byte = static_cast<unsigned char>(sign);
    if (std::isalnum(byte) != 0 && byte < 0x80) {
      encoded += sign;
    } else {
      encoded += sign == ' ' ? "+" : fmt::format("%{:02X}", byte);
    }
  }
  return encoded;
}

}  // namespace

std::string ArchiveChecksum(const std::string& sentence) { return Md5Hex(Replace(sentence, " ", "")); }

std::string SendServerHtm(Program& program, const std::string& page, const std::string& sentence) {
  const auto& app = program.app;
  std::string checksum = ArchiveChecksum(sentence);
  const HttpRequest request{.method = "POST",
                            .url = app.gFileServerRoot + "p_all_engine_htm_rec.asp",
                            .headers = {{"Content-Type", "application/x-www-form-urlencoded"}},
                            .body = fmt::format("{}&enginever={}&pnomd5={}&checksum={}&filestr={}",
                                                kAccessKey, FormEncoded(app.gEngineVersion),
                                                Md5Hex(app.gAccountNo), checksum, FormEncoded(page))};
  try {
    program.machine.http.Send(request);
  } catch (const RunTimeError&) {
    return checksum;
  }
  return checksum;
}

std::string ArchivedPageUrl(const Program& program, const std::string& root, const std::string& checksum) {
  return fmt::format("{}p_all_engine_htm_show.asp?{}&pnomd5={}&checksum={}&enginever={}", root, kAccessKey,
                     Md5Hex(program.app.gAccountNo), checksum, program.app.gEngineVersion);
}
