// The server's pages: what each one gets, what it may use, and what it returns.
#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "protocol/form.h"
#include "protocol/refusal.h"
#include "server/accounts/accounts.h"
#include "server/services/settings.h"
#include "server/services/shared_engine.h"
#include "server/services/shared_word_bank.h"
#include "server/store/account_store.h"
#include "server/store/page_store.h"
#include "server/store/record_store.h"
#include "server/store/school_store.h"

namespace server {

using protocol::Form;
using protocol::Refusal;
namespace refusal = protocol::refusal;

/// The most bytes of a field that holds a number, an id or a digest, and of one that holds a short word.
inline constexpr std::size_t kNumberLimit = 64, kWordLimit = 16;

/// What the pages share.
struct Services {
  const ServerSettings& settings;
  const SharedEngine& engine;
  const SharedWordBank& wordBank;
  PageStore& results;
  AccountStore& store;
  SchoolStore& school;
  Accounts& accounts;
  RecordStore& records;
};

/// The value of a header of the request by its name, "" for a missing one.
using Headers = std::function<std::string(const std::string&)>;

struct Request {
  std::string_view body;
  std::string root;     ///< the server's root as the caller sees it, ended by "/"
  std::string address;  ///< of the caller
  Headers Header;
};

struct Call {
  Form form;
  std::string root;
  Headers Header;
  Caller caller;
  std::string account;  ///< of a page with an account field, cleaned
};

struct Reply {
  std::string body;  ///< CP950
  /// The page is the server's own, with nothing from outside that is not escaped: its links to the program
  /// (cmd:) need no sandbox.
  bool isOwnPage = false;
  std::string token = {};  ///< what a program that has logged in is to send from then on
};

/// A reply of UTF-8 text.
Reply TextReply(std::string_view text);

/// What the engine or the word bank answers. Any exception becomes the refusal kEngine, unlogged: that it
/// could not be loaded was logged then. So fields of the form are read before.
template <typename Ask>
auto AnswerOrRefuse(const Ask& ask) try {
  return ask();
} catch (const std::exception&) {
  throw Refusal(refusal::kEngine);
}

/// One page. A refusal is thrown.
struct Page {
  enum class Body { kPlain, kBrowserForm };
  enum class Method { kPost, kGet };  ///< of a GET the query is the body

  std::string_view name;
  Reply (*answer)(Services&, const Call&);
  Body body = Body::kPlain;
  std::size_t bodyLimit = 1 << 20;  ///< bytes
  std::string_view lastField = {};  ///< see Form::Plain
  Method method = Method::kPost;
  bool isPublic = false;  ///< needs no access key
  /// The field with the number of the learner whose data the page reads or writes: see LearnerOf. A page
  /// without one is nobody's, or tests the caller itself: logins and the writing of settings by the password,
  /// the others as their functions say.
  std::string_view accountField = {};
};

/// Null for a name that is unknown or answers another method.
const Page* FindPage(std::string_view name, Page::Method method);

/// Reads the body, tests the access key and the caller, and has the page answer. Refusals and failures come
/// back as a reply that begins with "ERR_".
Reply Answer(const Page& page, Services& services, const Request& request);

/// The learner's account, cleaned: proven by the caller's token where the owner requires one, else only
/// known. Throws Refusal as Accounts::Proven or Accounts::Known does.
std::string LearnerOf(const Services& services, const Caller& caller, std::string_view number);

// The pages, each documented in docs/protocol.md.
Reply ServerProbe(Services& services, const Call& call);
Reply EngineAddress(Services& services, const Call& call);
Reply EngineProbe(Services& services, const Call& call);
Reply NewestVersion(Services& services, const Call& call);
Reply PublisherNews(Services& services, const Call& call);
Reply CheckSentence(Services& services, const Call& call);
Reply AskWordBank(Services& services, const Call& call);
Reply TranslateText(Services& services, const Call& call);
Reply WebHelperSites(Services& services, const Call& call);
Reply ShowPackedPage(Services& services, const Call& call);
Reply ArchivePage(Services& services, const Call& call);
Reply ShowArchivedPage(Services& services, const Call& call);
Reply Login(Services& services, const Call& call);
Reply CheckPassword(Services& services, const Call& call);
Reply UserSettings(Services& services, const Call& call);
Reply SchoolServer(Services& services, const Call& call);
Reply StoreFeedback(Services& services, const Call& call);
Reply ServiceMail(Services& services, const Call& call);
Reply UserAct(Services& services, const Call& call);
Reply UpdateRecords(Services& services, const Call& call);
Reply SyncChecksum(Services& services, const Call& call);
Reply SyncClient(Services& services, const Call& call);
Reply WorkList(Services& services, const Call& call);
Reply WorkQuestion(Services& services, const Call& call);
Reply TeacherComment(Services& services, const Call& call);
Reply HandInEssay(Services& services, const Call& call);

}  // namespace server
