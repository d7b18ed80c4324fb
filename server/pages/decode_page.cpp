// Shows a result page that the program made itself.
#include "base/cp950.h"
#include "protocol/page_code.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::string_view kDamaged = R"(<!DOCTYPE html>
<html lang="zh-Hant">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=big5">
<title>無法顯示解析結果</title>
</head>
<body style="background: #FAF4ED; color: #3A2F26; font-family: sans-serif; line-height: 1.6; padding: 18px 22px">
<p><b>這一頁解析結果在傳送途中受損，無法顯示。</b></p>
<p>您的句子和檢查結果都已經記錄下來。請再檢查一次這個句子，即可看到說明。</p>
</body>
</html>
)";

}  // namespace

Reply ShowPackedPage(Services& /*services*/, const Call& call) {
  auto page = protocol::DecodePage(call.form.Find("code").value_or(""));
  if (page && !page->empty()) return {.body = std::move(*page)};
  return {.body = base::ToCp950(kDamaged, base::Unencodable::kReference)};
}

}  // namespace server
