#include "server/http/server.h"

#include <fmt/format.h>
#include <httplib.h>
#include <sodium.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <thread>

#include "protocol/headers.h"
#include "server/http/caller_address.h"
#include "server/http/static_files.h"
#include "server/http/teacher_requests.h"
#include "server/services/data_folder.h"
#include "server/services/log.h"

namespace server {
namespace {

constexpr std::size_t kKeptResults = 1000;
constexpr std::size_t kLargestBody = 64 << 20;
constexpr std::size_t kThreads = 16;
constexpr int kBacklog = 128;  // callers that may wait for a thread
constexpr time_t kReadSeconds = 10;
constexpr const char* kContentType = "text/html; charset=big5";

/// Pages come from outside (p_decode.asp): whatever they hold runs no script, sends no form and has no
/// origin.
constexpr const char* kContentPolicy =
    "sandbox allow-scripts; default-src 'none'; style-src 'unsafe-inline'; img-src data:";

constexpr const char* kOwnPagePolicy = "default-src 'none'; style-src 'unsafe-inline'";

bool IsHost(const std::string& host) {
  return !host.empty() && std::all_of(host.begin(), host.end(), [](unsigned char sign) {
    return std::isalnum(sign) != 0 ||
           std::string_view(".-:[]_").find(static_cast<char>(sign)) != std::string_view::npos;
  });
}

/// One server per port: a second one finds that the port is taken.
void SetSocketOptions(int socket) {
  const int yes = 1;
  setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

httplib::Headers CommonHeaders() {
  return {{"Cache-Control", "no-store"},
          {"Content-Security-Policy", kContentPolicy},
          {"Referrer-Policy", "no-referrer"},
          {"X-Content-Type-Options", "nosniff"}};
}

/// One request a connection: an idle one would hold a thread, and the end of the server up.
void Configure(httplib::Server& http) {
  http.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  http.set_tcp_nodelay(true);
  http.set_keep_alive_max_count(1);
  http.set_read_timeout(kReadSeconds);
  http.set_payload_max_length(kLargestBody);
  http.set_default_headers(CommonHeaders());
}

/// Reads the whole body but keeps no more than is needed to see that it is too long. No page takes files: of
/// a multipart body nothing is kept.
bool ReadBody(const httplib::Request& request, const httplib::ContentReader& read, std::size_t limit,
              std::string& body) {
  if (request.is_multipart_form_data()) {
    return read([](const auto& /*part*/) { return true; }, [](const char*, std::size_t) { return true; });
  }
  std::size_t total = 0;
  return read([&](const char* bytes, std::size_t length) {
    total += length;
    body.append(bytes, std::min(length, limit + 1 - body.size()));
    return total <= kLargestBody;
  });
}

}  // namespace

Server::Server(ServerOptions options, SharedEngine::Load load)
    : options_(std::move(options)),
      engine_(std::move(load)),
      wordBank_(options_.engineData),
      settings_(ReadServerSettings(MadeDataFolder(options_.dataDir) / "server.set")),
      store_(OpenAccountStore(options_.dataDir / "server.db")),
      school_(OpenSqliteSchoolStore(options_.dataDir / "server.db")),
      records_(options_.dataDir / "server.db"),
      results_(kKeptResults),
      accounts_(*store_),
      services_{settings_, engine_, wordBank_, results_, *store_, *school_, accounts_, records_},
      teachers_(*school_, *store_, engine_,
                {options_.prefix + "/" + std::string(kTeacherFolder), settings_.behindProxy, options_.clock}),
      http_(std::make_unique<httplib::Server>()) {
  settings_.openAccounts = settings_.openAccounts || options_.openAccounts;
  settings_.requireToken = settings_.requireToken && !options_.pathIsSecret;
  for (const std::string& login : settings_.logins) accounts_.Await(login);
  Configure(*http_);
  http_->set_socket_options([this](int socket) { SetSocketOptions(socket_ = socket); });
  http_->Post(".*", [this](const auto& request, auto& response, const auto& readBody) {
    OnPost(request, response, readBody);
  });
  http_->Get(".*", [this](const auto& request, auto& response) { OnGet(request, response); });
}

Server::~Server() { Stop(); }

void Server::EnsureAccount(const AccountEntry& entry) { accounts_.Ensure(entry.number, entry.password); }

void Server::Start() {
  Bind();
  listening_ = std::async(std::launch::async, [this] { http_->listen_after_bind(); });
  while (!http_->is_running() && listening_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
    std::this_thread::yield();
  }
}

void Server::Stop() {
  if (!listening_.valid()) return;
  http_->stop();
  listening_.get();
}

std::string Server::Root() const {
  const bool ipv6 = options_.listen.find(':') != std::string::npos;
  const std::string host = ipv6 ? "[" + options_.listen + "]" : options_.listen;
  return RootFor(fmt::format("{}:{}", host, options_.port));
}

void Server::Bind() {
  errno = 0;
  if (options_.port == 0) {
    options_.port = std::max(0, http_->bind_to_any_port(options_.listen));
  } else if (!http_->bind_to_port(options_.listen, options_.port)) {
    options_.port = 0;
  }
  if (options_.port != 0) {
    ::listen(socket_, kBacklog);  // the library's own backlog of five turns a class away that clicks at once
    return;
  }
  throw std::runtime_error(
      fmt::format("cannot listen on {}: {}", options_.listen,
                  errno == 0 ? "no such address" : std::generic_category().message(errno)));
}

void Server::OnPost(const httplib::Request& request, httplib::Response& response,
                    const httplib::ContentReader& readBody) {
  std::string_view path = request.path;
  const bool isBelow = StripPrefix(path);
  if (isBelow && OnTeacher(path, request, &readBody, response)) return;
  const Page* page = isBelow ? FindPage(path, Page::Method::kPost) : nullptr;
  std::string body;
  if (!ReadBody(request, readBody, page == nullptr ? 0 : page->bodyLimit, body)) return;
  if (page == nullptr) {
    response.status = 404;
    return;
  }
  AnswerPage(*page, request, body, response);
}

void Server::AnswerPage(const Page& page, const httplib::Request& request, std::string_view body,
                        httplib::Response& response) {
  const std::string host = request.get_header_value("Host");
  const auto headers = [&](const std::string& name) { return request.get_header_value(name); };
  const std::string root = IsHost(host) ? RootFor(host) : Root();
  const Reply reply =
      Answer(page, services_, {body, root, CallerAddress(request, settings_.behindProxy), headers});
  if (!reply.token.empty()) response.set_header(protocol::header::kToken, reply.token);
  if (reply.isOwnPage) {
    response.headers.erase("Content-Security-Policy");
    response.set_header("Content-Security-Policy", kOwnPagePolicy);
  }
  response.set_content(reply.body, kContentType);
}

void Server::OnGet(const httplib::Request& request, httplib::Response& response) {
  std::string_view path = request.path;
  if (!StripPrefix(path)) {
    response.status = 404;
  } else if (const auto result = results_.Find(path)) {
    response.set_content(*result, kContentType);
  } else if (const StaticFile* file = FindStaticFile(path)) {
    response.set_content(file->bytes.data(), file->bytes.size(), file->contentType);
  } else if (OnTeacher(path, request, nullptr, response)) {
    return;
  } else if (const Page* page = FindPage(path, Page::Method::kGet)) {
    const auto query = request.target.find('?');
    AnswerPage(*page, request, query == std::string::npos ? "" : request.target.substr(query + 1), response);
  } else {
    response.status = 404;
  }
}

/// False for a path that is none of the teachers' site.
bool Server::OnTeacher(std::string_view path, const httplib::Request& request,
                       const httplib::ContentReader* readBody, httplib::Response& response) {
  if (!options_.teacherSite) return false;
  if (readBody == nullptr && path == "teacher") {
    response.set_redirect(fmt::format("{}/{}", options_.prefix, kTeacherFolder));
    return true;
  }
  if (!path.starts_with(kTeacherFolder)) return false;
  path.remove_prefix(kTeacherFolder.size());
  AnswerTeacher(teachers_, path, request, readBody, settings_.behindProxy, response);
  return true;
}

/// Takes the prefix off a path. Its bytes are compared in constant time: they are what keeps others out.
bool Server::StripPrefix(std::string_view& path) const {
  const std::string prefix = options_.prefix + "/";
  if (path.size() < prefix.size() || sodium_memcmp(path.data(), prefix.data(), prefix.size()) != 0)
    return false;
  path.remove_prefix(prefix.size());
  return true;
}

std::string Server::RootFor(const std::string& host) const {
  return fmt::format("http://{}{}/", host, options_.prefix);
}

}  // namespace server
