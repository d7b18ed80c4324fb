#include "protocol/form.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "base/cp950.h"
#include "base/percent.h"
#include "base/text.h"
#include "base/utf8.h"
#include "protocol/headers.h"

namespace protocol {
namespace {

struct Reference {
  char32_t code;
  std::size_t length;  ///< 0 when there is none
};

/// The numeric reference at the front of a text. ASCII needs none: it was typed.
Reference ReferenceAt(std::string_view text) {
  std::uint32_t code = 0;
  if (!text.starts_with("&#")) return {0, 0};
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data() + 2, end, code);
  const bool isReference = read.ec == std::errc{} && read.ptr != end && *read.ptr == ';' && code >= 0x80;
  return {code, isReference ? static_cast<std::size_t>(read.ptr + 1 - text.data()) : 0};
}

}  // namespace

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

std::string Big5Value(std::string_view text) {
  return base::ToCp950(base::Replace(base::Replace(text, "\r\n", "\n"), "\n", "\r\n"),
                       base::Unencodable::kReference);
}

std::string TextOfBig5Value(std::string_view bytes) {
  const std::string written = base::FromCp950(bytes, base::Undecodable::kQuestionMark);
  std::string text;
  for (std::string_view rest = written; !rest.empty();) {
    const auto [code, length] = ReferenceAt(rest);
    if (length > 0) {
      base::AppendUtf8(text, code);
    } else {
      text += rest[0];
    }
    rest.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return text;
}

Form Form::Plain(std::string_view body, std::string_view lastField) {
  const std::string lastBegin = std::string(lastField) + "=";
  Form form;
  while (!body.empty()) {
    const bool isLast = !lastField.empty() && body.starts_with(lastBegin);
    form.Add(isLast ? std::exchange(body, {}) : base::PopPiece(body, "&"));
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
