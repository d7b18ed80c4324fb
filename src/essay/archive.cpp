#include "essay/archive.h"

#include "base/digest.h"
#include "base/percent.h"
#include "base/text.h"
#include "core/program.h"
#include "platform/http.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/form.h"
#include "protocol/headers.h"
#include "protocol/pages.h"

namespace marovane {

std::string ArchiveChecksum(const std::string& sentence) {
  // Records and reports know one kind of apostrophe only.
  return base::SlotMd5(base::Replace(base::Replace(sentence, "’", "'"), " ", ""));
}

std::string SendServerHtm(Program& program, const std::string& page, const std::string& sentence) {
  const auto& app = program.app;
  std::string checksum = ArchiveChecksum(sentence);
  base::HttpRequest request{
      .method = "POST",
      .url = app.gFileServerRoot + protocol::page::kArchivePage,
      .headers = {{"Content-Type", protocol::kFormType}},
      .body = protocol::PlainBody({{"enginever", base::FormEncode(app.gEngineVersion, "")},
                                   {"pnomd5", base::SlotMd5(app.gAccountNo)},
                                   {"checksum", checksum},
                                   {"filestr", base::FormEncode(page, "")}})};
  program.proof.AddTo(request);
  program.machine.http.SendLater(request);
  return checksum;
}

std::string ArchivedPageUrl(const Program& program, const std::string& root, const std::string& checksum) {
  return root + protocol::page::kShowArchivedPage + "?" +
         protocol::PlainBody({{"pnomd5", base::SlotMd5(program.app.gAccountNo)},
                              {"checksum", checksum},
                              {"enginever", program.app.gEngineVersion}});
}

}  // namespace marovane
