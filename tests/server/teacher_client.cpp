#include "tests/server/teacher_client.h"

#include <gtest/gtest.h>

namespace {

std::string Between(const std::string& text, const std::string& begin, char end) {
  const std::size_t at = text.find(begin);
  if (at == std::string::npos) return "";
  const std::size_t from = at + begin.size();
  return text.substr(from, text.find(end, from) - from);
}

std::string Path(const std::string& path) { return RunningServer::kPrefix + ("/teacher/" + path); }

}  // namespace

httplib::Headers TeacherClient::Headers() const {
  std::string all;
  for (const auto& [name, value] : cookies) all += (all.empty() ? "" : "; ") + name + "=" + value;
  httplib::Headers headers = extraHeaders;
  if (!all.empty()) headers.emplace("Cookie", all);
  return headers;
}

WebPage TeacherClient::Keep(const httplib::Result& answer) {
  if (!answer) {
    ADD_FAILURE() << "no answer";
    return {};
  }
  const auto [from, to] = answer->headers.equal_range("Set-Cookie");
  for (auto each = from; each != to; ++each) {
    const std::string& cookie = each->second;
    const std::string name = cookie.substr(0, cookie.find('='));
    cookies[name] = Between(cookie, "=", ';');
    if (cookies[name].empty()) cookies.erase(name);
  }
  const std::string found = Between(answer->body, R"(name="token" value=")", '"');
  if (!found.empty()) token = found;
  return {answer->status, answer->body, answer->get_header_value("Location"), answer->headers};
}

WebPage TeacherClient::Get(const std::string& path) {
  return Keep(server_.Client().Get(Path(path), Headers()));
}

WebPage TeacherClient::Post(const std::string& path, Fields fields) {
  fields.emplace("token", token);
  return Keep(server_.Client().Post(Path(path), Headers(), httplib::Params(fields.begin(), fields.end())));
}

WebPage TeacherClient::PostFile(const std::string& path, Fields fields, const std::string& file) {
  fields.emplace("token", token);
  httplib::MultipartFormDataItems items;
  for (const auto& [name, value] : fields) items.push_back({name, value, "", ""});
  items.push_back({"roster", file, "roster.csv", "text/csv"});
  return Keep(server_.Client().Post(Path(path), Headers(), items));
}

WebPage TeacherClient::Send(const std::string& path, const std::string& body,
                            const std::string& contentType) {
  return Keep(server_.Client().Post(Path(path), Headers(), body, contentType));
}

WebPage TeacherClient::LogIn(const std::string& login, const std::string& password) {
  Get("login");
  return Post("login", {{"login", login}, {"password", password}});
}
