#include "server/pages/page.h"

#include <algorithm>
#include <array>
#include <exception>

#include "base/cp950.h"
#include "protocol/check.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "server/services/log.h"

namespace server {

namespace page = protocol::page;

namespace {

constexpr std::size_t kPackedPageLimit = 8 << 20;
constexpr std::size_t kRecordsLimit = 64 << 20;

constexpr std::array<Page, 26> kPages = {{
    {page::kServerProbe, ServerProbe},
    {page::kEngineAddress, EngineAddress},
    {page::kEngineProbe, EngineProbe},
    {page::kCheckSentence, CheckSentence, Page::Body::kPlain, 1 << 20, protocol::kSentenceField},
    {page::kWordBank, AskWordBank, Page::Body::kPlain, 1 << 20, "para"},
    {page::kTranslate, TranslateText, Page::Body::kPlain, 1 << 20, "q"},
    {page::kWebHelperSites, WebHelperSites},
    {page::kShowPackedPage, ShowPackedPage, Page::Body::kBrowserForm, kPackedPageLimit},
    {page::kArchivePage, ArchivePage, Page::Body::kBrowserForm, kPackedPageLimit},
    {page::kShowArchivedPage, ShowArchivedPage, Page::Body::kBrowserForm, 1 << 12, {}, Page::Method::kGet},
    {page::kLogin, Login},
    {page::kCheckPassword, CheckPassword},
    {page::kNewestVersion, NewestVersion},
    {page::kUserSettings, UserSettings},
    {.name = page::kUserAct, .answer = UserAct, .accountField = "pno"},
    {.name = page::kUpdateRecords,
     .answer = UpdateRecords,
     .body = Page::Body::kBrowserForm,
     .bodyLimit = kRecordsLimit,
     .accountField = "pno"},
    {.name = page::kSyncChecksum, .answer = SyncChecksum, .accountField = "regid"},
    {.name = page::kSyncClient, .answer = SyncClient, .accountField = "pno"},
    {page::kPublisherNews, PublisherNews},
    {.name = page::kWork, .answer = WorkList, .accountField = "pno"},
    {.name = page::kWork,
     .answer = WorkQuestion,
     .body = Page::Body::kBrowserForm,
     .bodyLimit = 1 << 12,
     .method = Page::Method::kGet,
     .accountField = "pno"},
    {.name = page::kTeacherComment,
     .answer = TeacherComment,
     .body = Page::Body::kBrowserForm,
     .bodyLimit = 1 << 12,
     .method = Page::Method::kGet,
     .accountField = "pno"},
    {.name = page::kHandInEssay, .answer = HandInEssay, .accountField = "pno"},
    {page::kSchoolServer, SchoolServer},
    {page::kFeedback, StoreFeedback, Page::Body::kBrowserForm, 1 << 14},
    {page::kServiceMail, ServiceMail, Page::Body::kPlain, 1 << 10, {}, Page::Method::kGet, true},
}};

Form ReadBody(const Page& page, std::string_view body) {
  if (body.size() > page.bodyLimit) throw Refusal(refusal::kTooLong);
  return page.body == Page::Body::kPlain ? Form::Plain(body, page.lastField) : Form::Browser(body);
}

}  // namespace

Reply TextReply(std::string_view text) { return {.body = base::ToCp950(text)}; }

const Page* FindPage(std::string_view name, Page::Method method) {
  const auto* page = std::ranges::find_if(
      kPages, [&](const Page& each) { return each.name == name && each.method == method; });
  return page == kPages.end() ? nullptr : page;
}

std::string LearnerOf(const Services& services, const Caller& caller, std::string_view number) {
  if (!services.settings.requireToken) return services.accounts.Known(number);
  return services.accounts.Proven(number, caller.token, caller.address);
}

Reply Answer(const Page& page, Services& services, const Request& request) try {
  Call call{.form = ReadBody(page, request.body),
            .root = request.root,
            .Header = request.Header,
            .caller = {.address = request.address,
                       .token = request.Header(protocol::header::kToken),
                       .oldToken = request.Header(protocol::header::kOldToken)},
            .account = {}};
  if (!page.isPublic && call.form.Find("key") != protocol::kAccessKey) throw Refusal(refusal::kWrongKey);
  if (!page.accountField.empty()) {
    const std::string number = call.form.Required(std::string(page.accountField), kNumberLimit);
    call.account = LearnerOf(services, call.caller, number);
  }
  return page.answer(services, call);
} catch (const Refusal& refusal) {
  return TextReply(refusal.what());
} catch (const std::exception& error) {
  LogError("{}: {}", page.name, error.what());
  return TextReply(refusal::kServer);
}

}  // namespace server
