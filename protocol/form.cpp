#include "protocol/form.h"

#include "base/percent.h"
#include "base/text.h"
#include "base/utf8.h"
#include "protocol/headers.h"

namespace protocol {

std::string PlainBody(Fields fields) {
  std::string body = std::string("key=") + kAccessKey;
  for (const auto& [name, value] : fields) body.append("&").append(name).append("=").append(value);
  return body;
}

std::string PlainValue(std::string_view text) { return base::PercentEncode(text, "%& "); }

std::string BrowserBody(Fields fields) {
  std::string body = PlainBody();
  for (const auto& [name, value] : fields) AddBrowserField(body, name, value);
  return body;
}

void AddBrowserField(std::string& body, std::string_view name, std::string_view value) {
  body += "&" + base::FormEncode(name) + "=" + base::FormEncode(value);
}

Form Form::Plain(std::string_view body, std::string_view lastField) {
  const std::string lastBegin = std::string(lastField) + "=";
  Form form;
  while (!body.empty()) {
    const bool last = !lastField.empty() && body.starts_with(lastBegin);
    const std::size_t end = last ? body.size() : std::min(body.find('&'), body.size());
    form.Add(body.substr(0, end));
    body.remove_prefix(std::min(end + 1, body.size()));
  }
  return form;
}

Form Form::Browser(std::string_view body) { return Plain(base::Replace(body, "+", " ")); }

std::optional<std::string> Form::Find(const std::string& name) const {
  const auto field = fields_.find(name);
  if (field == fields_.end()) return std::nullopt;
  return field->second;
}

std::string Form::Required(const std::string& name, std::size_t limit, std::string_view allowed) const {
  const auto value = Find(name);
  if (!value) throw Refusal(refusal::kMissingField);
  if (value->size() > limit) throw Refusal(refusal::kTooLong);
  if (!base::IsCleanText(*value, allowed)) throw Refusal(refusal::kBadText);
  return *value;
}

void Form::Add(std::string_view piece) {
  const std::size_t equals = piece.find('=');
  if (equals == std::string_view::npos) return;
  fields_.emplace(base::PercentDecode(piece.substr(0, equals)),
                  base::PercentDecode(piece.substr(equals + 1)));
}

}  // namespace protocol
