#include "server/pages/page.h"

#include <algorithm>
#include <array>
#include <exception>

#include "base/cp950.h"
#include "server/log.h"

namespace marovane {
namespace {

constexpr const char* kAccessKey = "zorbelquinter";
constexpr std::size_t kPackedPageLimit = 8 << 20;
constexpr std::size_t kRecordsLimit = 64 << 20;

constexpr std::array<Page, 26> kPages = {{
    {"p_getconn.asp", ServerProbe},
    {"p_all_webengine_get.asp", EngineAddress},
    {"p_passWebEngine_conn.asp", EngineProbe},
    {"p_passWebEngine.asp", CheckSentence, Page::Body::kPlain, 1 << 20, "s"},
    {"p_passWebEngine_wbank.asp", AskWordBank, Page::Body::kPlain, 1 << 20, "para"},
    {"p_com_translate.asp", TranslateText, Page::Body::kPlain, 1 << 20, "q"},
    {"p_getwebhelper.asp", WebHelperSites},
    {"p_decode.asp", ShowPackedPage, Page::Body::kBrowserForm, kPackedPageLimit},
    {"p_all_engine_htm_rec.asp", ArchivePage, Page::Body::kBrowserForm, kPackedPageLimit},
    {"p_all_engine_htm_show.asp",
     ShowArchivedPage,
     Page::Body::kBrowserForm,
     1 << 12,
     {},
     Page::Method::kGet},
    {"p_getlogin.asp", Login},
    {"p_getauthwithpw.asp", CheckPassword},
    {"p_getversion.asp", NewestVersion},
    {"p_getusersettings.asp", UserSettings},
    {"p_update_useract.asp", UserAct},
    {"p_update_err_rec.asp", UpdateRecords, Page::Body::kBrowserForm, kRecordsLimit},
    {"p_sync_checksum.asp", SyncChecksum},
    {"p_sync_client_new.asp", SyncClient},
    {"p_publisher_news.asp", PublisherNews},
    {"p_mrv_get_essay_work.asp", WorkList},
    {"p_mrv_get_essay_work.asp", WorkQuestion, Page::Body::kBrowserForm, 1 << 12, {}, Page::Method::kGet},
    {"p_get_essay_work_teacher.asp",
     TeacherComment,
     Page::Body::kBrowserForm,
     1 << 12,
     {},
     Page::Method::kGet},
    {"p_set_essay_work_finalset.asp", HandInEssay},
    {"p_server_get.asp", SchoolServer},
    {"p_feedback.asp", TakeFeedback, Page::Body::kBrowserForm, 1 << 14},
    {"m_service_mail.asp", ServiceMail, Page::Body::kPlain, 1 << 10, {}, Page::Method::kGet, true},
}};

Form ReadBody(const Page& page, std::string_view body) {
  if (body.size() > page.bodyLimit) throw Refusal("ERR_TOO_LONG");
  return page.body == Page::Body::kPlain ? Form::Plain(body, page.lastField) : Form::Browser(body);
}

}  // namespace

Reply TextReply(std::string_view text) { return {.body = base::ToCp950(text)}; }

const Page* FindPage(std::string_view name, Page::Method method) {
  const auto* page = std::find_if(kPages.begin(), kPages.end(), [&](const Page& each) {
    return each.name == name && each.method == method;
  });
  return page == kPages.end() ? nullptr : page;
}

Reply Answer(const Page& page, Services& services, std::string_view body, const std::string& root,
             const Headers& headers) try {
  const Call call{ReadBody(page, body), root, headers};
  if (!page.isPublic && call.form.Find("key") != kAccessKey) throw Refusal("ERR_WRONG_KEY");
  return page.answer(services, call);
} catch (const Refusal& refusal) {
  return TextReply(refusal.what());
} catch (const std::exception& error) {
  LogError("{}: {}", page.name, error.what());
  return TextReply("ERR_SERVER");
}

}  // namespace marovane
