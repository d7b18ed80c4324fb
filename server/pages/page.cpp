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
    {page::kUserAct, UserAct},
    {page::kUpdateRecords, UpdateRecords, Page::Body::kBrowserForm, kRecordsLimit},
    {page::kSyncChecksum, SyncChecksum},
    {page::kSyncClient, SyncClient},
    {page::kPublisherNews, PublisherNews},
    {page::kWork, WorkList},
    {page::kWork, WorkQuestion, Page::Body::kBrowserForm, 1 << 12, {}, Page::Method::kGet},
    {page::kTeacherComment, TeacherComment, Page::Body::kBrowserForm, 1 << 12, {}, Page::Method::kGet},
    {page::kHandInEssay, HandInEssay},
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

Reply Answer(const Page& page, Services& services, std::string_view body, const std::string& root,
             const Headers& headers) try {
  const Call call{ReadBody(page, body), root, headers};
  if (!page.isPublic && call.form.Find("key") != protocol::kAccessKey) throw Refusal(refusal::kWrongKey);
  return page.answer(services, call);
} catch (const Refusal& refusal) {
  return TextReply(refusal.what());
} catch (const std::exception& error) {
  LogError("{}: {}", page.name, error.what());
  return TextReply(refusal::kServer);
}

}  // namespace server
