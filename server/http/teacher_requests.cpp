#include "server/http/teacher_requests.h"

#include <httplib.h>

#include <utility>

#include "protocol/headers.h"
#include "server/http/caller_address.h"

namespace server {
namespace {

constexpr std::size_t kBodyLimit = 256 << 10;
constexpr std::size_t kReadLimit = 16 << 20;
constexpr std::size_t kPartOverhead = 64;  // what a field needs besides its value

/// No scripts, nothing from elsewhere, and in no frame of another site.
constexpr const char* kPolicy =
    "default-src 'none'; style-src 'self'; form-action 'self'; base-uri 'none'; frame-ancestors 'none'";

/// Reads more of a body than it keeps, so that the answer reaches the browser.
class LimitedBody {
 public:
  /// False when it is not worth reading on.
  bool Append(std::string& into, const char* bytes, std::size_t length) {
    if (Count(length)) into.append(bytes, length);
    return total_ <= kReadLimit;
  }
  /// Whether as much as this may still be kept.
  bool Count(std::size_t length) {
    total_ += length;
    return !IsTooLong();
  }
  bool IsTooLong() const { return total_ > kBodyLimit; }

 private:
  std::size_t total_ = 0;
};

/// The parts of a form with a file.
bool ReadParts(const httplib::ContentReader& read, LimitedBody& body, protocol::Form& fields) {
  std::string name;
  std::string value;
  const auto keep = [&] {
    if (body.Count(name.size() + kPartOverhead)) fields.Put(name, std::exchange(value, ""));
  };
  const bool isWhole = read(
      [&](const httplib::MultipartFormData& part) {
        keep();
        name = part.name;
        return true;
      },
      [&](const char* bytes, std::size_t length) { return body.Append(value, bytes, length); });
  keep();
  return isWhole;
}

/// The status of a form that cannot be read, 200 of one that was.
int ReadForm(const httplib::Request& request, const httplib::ContentReader& read, protocol::Form& fields) {
  LimitedBody body;
  if (request.is_multipart_form_data()) {
    if (!ReadParts(read, body, fields)) return 400;
  } else {
    std::string text;
    if (!read([&](const char* bytes, std::size_t length) { return body.Append(text, bytes, length); })) {
      return 400;
    }
    if (!request.get_header_value("Content-Type").starts_with(protocol::kFormType)) return 415;
    fields = protocol::Form::Browser(text);
  }
  return body.IsTooLong() ? 413 : 200;
}

protocol::Form Query(const httplib::Request& request) {
  const std::size_t mark = request.target.find('?');
  return protocol::Form::Browser(mark == std::string::npos ? "" : request.target.substr(mark + 1));
}

void SetHeaders(httplib::Response& response) {
  for (const char* const name : {"Content-Security-Policy", "Referrer-Policy"}) response.headers.erase(name);
  response.set_header("Content-Security-Policy", kPolicy);
  response.set_header("Referrer-Policy", "same-origin");
  response.set_header("X-Frame-Options", "DENY");
}

void Send(const TeacherReply& reply, httplib::Response& response) {
  response.status = reply.status;
  for (const std::string& cookie : reply.cookies) response.headers.emplace("Set-Cookie", cookie);
  if (!reply.location.empty()) response.set_header("Location", reply.location);
  response.set_content(reply.page, "text/html; charset=utf-8");
}

}  // namespace

void AnswerTeacher(TeacherSite& site, std::string_view path, const httplib::Request& request,
                   const httplib::ContentReader* readBody, bool isBehindProxy, httplib::Response& response) {
  SetHeaders(response);
  TeacherRequest asked{readBody != nullptr, std::string(path), Query(request),
                       request.get_header_value("Cookie"), CallerAddress(request, isBehindProxy)};
  if (readBody != nullptr) {
    asked.fields = {};
    const int status = ReadForm(request, *readBody, asked.fields);
    if (status != 200) return Send(site.Unreadable(status), response);
  }
  Send(site.Answer(asked), response);
}

}  // namespace server
