// What learners say about verdicts, and whom they may write to.
#include <fmt/format.h>

#include "base/day.h"
#include "base/utf8.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kShortLimit = 200;
constexpr std::size_t kTextLimit = 3000;

constexpr std::string_view kServicePage = R"(<!DOCTYPE html>
<html lang="zh-Hant">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=big5">
<title>服務信箱</title>
</head>
<body style="background: #FAF4ED; color: #3A2F26; font-family: sans-serif; line-height: 1.6; padding: 8px 18px">
<p><b>謝謝您的意見。</b>我們會依您送回的句子及說明改進批改的內容。</p>
<p>{}</p>
</body>
</html>
)";

/// A field of the form, which the program's page posts in Big5. Texts may have lines.
std::string Field(const Form& form, const std::string& name, std::size_t limit) {
  const auto bytes = form.Find(name);
  if (!bytes) throw Refusal(refusal::kMissingField);
  if (bytes->size() > limit) throw Refusal(refusal::kTooLong);
  std::string text = protocol::TextOfBig5Value(*bytes);
  if (!base::IsCleanText(text, "\r\n\t")) throw Refusal(refusal::kBadText);
  return text;
}

}  // namespace

/// Where tokens are required, only what a learner says is kept, under the learner's own number.
Reply StoreFeedback(Services& services, const Call& call) {
  const Form& form = call.form;
  std::string account = Field(form, "pno", kShortLimit);
  if (services.settings.requireToken) account = LearnerOf(services, call.caller, account);
  services.store.AddFeedback({.day = base::IsoDay(base::Today()),
                              .account = account,
                              .errcode = Field(form, "errcode", kShortLimit),
                              .sentence = Field(form, "sentence", kTextLimit),
                              .remarks = Field(form, "remarks", kTextLimit),
                              .email = Field(form, "email", kShortLimit)});
  return TextReply("OK_");
}

Reply ServiceMail(Services& services, const Call& /*call*/) {
  const std::string& mail = services.settings.serviceMail;
  return TextReply(fmt::format(kServicePage, mail.empty()
                                                 ? std::string("如有其他問題，請洽您的老師或管理人員。")
                                                 : "其他問題請寫信至：" + mail));
}

}  // namespace server
