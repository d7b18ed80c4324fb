// Result pages that come from the program: the archive, filed by the digests of an account number and of a
// sentence, and packed ones that the program made itself and only wants shown.
#include <fmt/format.h>

#include "base/cp950.h"
#include "base/digest.h"
#include "base/text.h"
#include "engine/tolvex.h"
#include "protocol/page_code.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kDigestLength = 32;
constexpr std::size_t kPageLimit = 1 << 20;

/// A page in place of one that cannot be shown.
Reply Notice(std::string_view title, std::string_view what, std::string_view why) {
  static constexpr std::string_view kPage = R"(<!DOCTYPE html>
<html lang="zh-Hant">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=big5">
<title>{}</title>
</head>
<body style="background: #FAF4ED; color: #3A2F26; font-family: sans-serif; line-height: 1.6; padding: 18px 22px">
<p><b>{}</b></p>
<p>{}</p>
</body>
</html>
)";
  return {base::ToCp950(fmt::format(kPage, title, what, why), base::Unencodable::kReference)};
}

bool IsDigest(std::string_view text) {
  return text.size() == kDigestLength && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// Where tokens are required, the digest must be that of the token's account.
ArchiveKey KeyOf(Services& services, const Call& call) {
  const Form& form = call.form;
  ArchiveKey key{form.Required("pnomd5", kDigestLength), form.Required("checksum", kDigestLength)};
  if (!IsDigest(key.pnomd5) || !IsDigest(key.checksum)) throw Refusal(refusal::kBadDigest);
  const bool isOwn =
      !services.settings.requireToken || base::SlotMd5(services.accounts.OwnerOf(call.caller)) == key.pnomd5;
  if (!isOwn) throw Refusal(refusal::kLogin);
  return key;
}

/// A page has line ends and tabs, which no other field may have.
std::string RequiredPage(const Form& form) {
  std::string page = form.Required("filestr", kPageLimit, "\r\n\t");
  if (page.empty()) throw Refusal(refusal::kMissingField);
  return page;
}

/// Programs file the body alone when they have fetched the page from a web engine.
std::string WholePage(const std::string& filed) {
  const bool isWhole = base::Lower(filed).find("<body") != std::string::npos;
  return isWhole ? filed : tolvex::ResultPageOf(filed);
}

}  // namespace

Reply ArchivePage(Services& services, const Call& call) {
  const ArchiveKey key = KeyOf(services, call);
  services.store.PutArchivedPage(key, RequiredPage(call.form));
  return TextReply("OK_" + key.checksum);
}

Reply ShowArchivedPage(Services& services, const Call& call) {
  const auto page = services.store.ArchivedPage(KeyOf(services, call));
  if (page) return {base::ToCp950(WholePage(*page), base::Unencodable::kReference)};
  return Notice("沒有批改內容", "伺服器上沒有這個句子的詳細批改內容。",
                "可能是批改當時網路中斷，內容沒有送達。您可以在主視窗再檢查一次這個句子，即可看到說明。");
}

Reply ShowPackedPage(Services& /*services*/, const Call& call) {
  auto page = protocol::DecodePage(call.form.Find("code").value_or(""));
  if (page && !page->empty()) return {.body = std::move(*page)};
  return Notice("無法顯示解析結果", "這一頁解析結果在傳送途中受損，無法顯示。",
                "您的句子和檢查結果都已經記錄下來。請再檢查一次這個句子，即可看到說明。");
}

}  // namespace server
