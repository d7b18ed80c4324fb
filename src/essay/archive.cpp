#include "essay/archive.h"

#include <fmt/format.h>

#include "base/digest.h"
#include "base/percent.h"
#include "base/text.h"
#include "core/program.h"
#include "core/server_access.h"
#include "platform/http.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

std::string ArchiveChecksum(const std::string& sentence) {
  return base::SlotMd5(base::Replace(sentence, " ", ""));
}

std::string SendServerHtm(Program& program, const std::string& page, const std::string& sentence) {
  const auto& app = program.app;
  std::string checksum = ArchiveChecksum(sentence);
  const base::HttpRequest request{
      .method = "POST",
      .url = app.gFileServerRoot + "p_all_engine_htm_rec.asp",
      .headers = {{"Content-Type", "application/x-www-form-urlencoded"}},
      .body = fmt::format("{}&enginever={}&pnomd5={}&checksum={}&filestr={}", kAccessKey,
                          base::FormEncode(app.gEngineVersion, ""), base::SlotMd5(app.gAccountNo), checksum,
                          base::FormEncode(page, ""))};
  try {
    program.machine.http.Send(request);
  } catch (const RunTimeError&) {
    return checksum;
  }
  return checksum;
}

std::string ArchivedPageUrl(const Program& program, const std::string& root, const std::string& checksum) {
  return fmt::format("{}p_all_engine_htm_show.asp?{}&pnomd5={}&checksum={}&enginever={}", root, kAccessKey,
                     base::SlotMd5(program.app.gAccountNo), checksum, program.app.gEngineVersion);
}
