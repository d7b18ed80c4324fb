#include "core/proof.h"

#include <algorithm>
#include <filesystem>

#include "base/cp950.h"
#include "base/percent.h"
#include "base/text.h"
#include "core/key_value_file.h"
#include "core/message.h"
#include "core/program.h"
#include "core/resume_next.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "platform/event_loop.h"
#include "platform/http.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"

namespace marovane {

namespace {

// What else comes, from a damaged file or from a stranger, is none.
bool IsToken(std::string_view text) {
  constexpr std::size_t kSigns = 43;
  return text.size() == kSigns && std::ranges::all_of(text, [](char sign) {
           return (sign >= '0' && sign <= '9') || (sign >= 'A' && sign <= 'Z') ||
                  (sign >= 'a' && sign <= 'z');
         });
}

// Without the "/" at its end, "http://server" would also begin "http://server.elsewhere/".
bool IsBelow(const std::string& root, const std::string& url) {
  constexpr std::string_view kSchemeEnd = "://";
  const auto scheme = root.find(kSchemeEnd);
  const bool hasHost =
      scheme != std::string::npos && root.find('/', scheme + kSchemeEnd.size()) > scheme + kSchemeEnd.size();
  return hasHost && root.ends_with('/') && url.starts_with(root);
}

bool IsSameAccount(const std::string& one, const std::string& other) {
  return protocol::CleanAccount(one) == protocol::CleanAccount(other);
}

}  // namespace

// The address of the own server is another one at each start.
std::string Proof::Key(const std::string& account) const {
  const std::string& root = program_.app.gServerUrlRoot;
  const auto& installation = program_.installation;
  const bool isOwn = installation.hasOwnServer && root == installation.serverRoot;
  return base::EncodeMarked((isOwn ? "own" : root) + " " + protocol::CleanAccount(account), "=\r\n");
}

std::string Proof::File() const {
  return std::filesystem::path(program_.app.gSetupFile).replace_filename("token.set").string();
}

// A file that cannot be read or written costs a login.
std::string Proof::Read(const std::string& key) const {
  if (program_.app.gEdition == "XQD") return "";
  std::string token;
  RunSkippingFailures({[&] { token = ReadWriteSetFile(program_.machine.files, File(), "R", key, ""); }});
  return IsToken(token) ? token : "";
}

void Proof::Write(const std::string& key, const std::string& token) {
  if (program_.app.gEdition == "XQD") return;
  RunSkippingFailures({[&] { ReadWriteSetFile(program_.machine.files, File(), "W", key, token); }});
}

std::string Proof::Find(const std::string& account) const {
  if (protocol::CleanAccount(account).empty()) return "";
  const auto found = tokens_.find(Key(account));
  return found != tokens_.end() ? found->second : Read(Key(account));
}

void Proof::Keep(const std::string& account, const base::HttpResponse& response) {
  constexpr int kOk = 200;
  const std::string token = response.Header(protocol::header::kToken);
  if (response.status != kOk || !IsToken(token) || !IsBelow(program_.app.gServerUrlRoot, response.url))
    return;
  tokens_[Key(account)] = token;
  Write(Key(account), token);
}

// Another process of the same learner may have written another one.
void Proof::Forget(const std::string& account, const std::string& token) {
  if (token.empty()) return;
  tokens_.erase(Key(account));
  if (Read(Key(account)) == token) Write(Key(account), "");
}

std::string Proof::TokenFor(const std::string& url, const std::string& account) const {
  return IsBelow(program_.app.gServerUrlRoot, url) ? Find(account) : "";
}

void Proof::AddTo(base::HttpRequest& request, const std::string& oldAccount) const {
  const std::string& own = program_.app.gAccountNo;
  const auto add = [&](const char* header, const std::string& account) {
    const std::string token = TokenFor(request.url, account);
    if (token.empty()) return;
    request.headers.emplace_back(header, token);
    request.followsRedirections = false;
  };
  add(protocol::header::kToken, own);
  if (!IsSameAccount(own, oldAccount)) add(protocol::header::kOldToken, oldAccount);
}

base::HttpResponse Proof::Send(const base::HttpRequest& request, const std::string& oldAccount) {
  const auto send = [&] {
    base::HttpRequest proved = request;
    AddTo(proved, oldAccount);
    return program_.machine.http.Send(proved);
  };
  const std::string& account = program_.app.gAccountNo;
  const std::string sent = TokenFor(request.url, account);
  base::HttpResponse response = send();
  const bool isWanted = response.body == protocol::refusal::kLogin;
  if (!isWanted || !IsBelow(program_.app.gServerUrlRoot, request.url)) return response;
  // Where two accounts have to be proved, it may be the other one that is not.
  const bool isMerge = !oldAccount.empty() && !IsSameAccount(account, oldAccount);
  if (!isMerge) Forget(account, sent);
  const std::string known = TokenFor(request.url, account);
  const bool hasAnother = !known.empty() && known != sent;
  return hasAnother || LogInAgain() ? send() : response;
}

std::string Proof::Ask(const char* page, protocol::Fields fields) try {
  return base::FromCp950(
      Send(FormRequest(program_.app.gServerUrlRoot + page, protocol::PlainBody(fields))).body);
} catch (const BrokenOff&) {
  throw;
} catch (const RunTimeError&) {
  return protocol::refusal::kConnectFailed;
}

std::string Proof::AskLogin(const char* page, const std::string& account, protocol::Fields fields) try {
  base::HttpRequest request = FormRequest(program_.app.gServerUrlRoot + page, protocol::PlainBody(fields));
  const std::string known = TokenFor(request.url, account);
  if (!known.empty()) request.headers.emplace_back(protocol::header::kToken, known);
  const base::HttpResponse response = program_.machine.http.Send(request);
  std::string reply = base::FromCp950(response.body);
  if (!reply.starts_with("OK") && !reply.starts_with("SET")) return reply;
  Keep(account.empty() ? base::Replace(reply, "OK_", "") : account, response);
  refused_.clear();
  untold_ = nullptr;
  return reply;
} catch (const BrokenOff&) {
  throw;
} catch (const RunTimeError&) {
  return protocol::refusal::kConnectFailed;
}

// At a campus the stored one is that of the desktop edition's account.
std::string Proof::KnownPassword() const {
  const auto& app = program_.app;
  std::string password = app.gAccountPassword;
  if (password.empty() && app.gEdition != "XQD") password = StoredPassword(program_);
  return IsRefused(password) ? "" : password;
}

bool Proof::LogInAgain() {
  auto& app = program_.app;
  if (app.gAccountNo.empty()) return false;
  const std::string password = KnownPassword();
  if (password.empty()) {
    if (untold_ == nullptr) untold_ = &Message::kPasswordNeeded;
    return false;
  }
  const std::string reply = CheckAccountPassword(program_, app.gAccountNo, password);
  if (reply.starts_with("OK")) return true;
  untold_ = LoginRefusal(reply);
  if (reply != protocol::refusal::kWrongPassword) return false;
  refused_ = password;
  if (!program_.installation.hasOwnServer) app.gAccountPassword.clear();  // the next check asks for it
  return false;
}

void Proof::TellRefusal() {
  if (untold_ == nullptr || isTold_) return;
  isTold_ = true;
  auto& app = program_.app;
  const std::string answer = app.gMsgResult;  // to a question that somebody may still wait for
  app.gProgressDetail.clear();
  FrmMessage::MessageBox(program_, *untold_);
  app.gMsgResult = answer;
}

std::string CheckAccountPassword(Program& program, const std::string& account, const std::string& password) {
  const std::string number = protocol::CleanAccount(account);
  return program.proof.AskLogin(protocol::page::kCheckPassword, number,
                                {{"pno", number}, {"pw", protocol::PlainValue(password)}});
}

}  // namespace marovane
