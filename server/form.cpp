#include "server/form.h"

#include "base/percent.h"
#include "base/text.h"
#include "base/utf8.h"

namespace marovane {

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

std::string Form::Required(const std::string& name, std::size_t limit) const {
  const auto value = Find(name);
  if (!value) throw Refusal("ERR_MISSING_FIELD");
  if (value->size() > limit) throw Refusal("ERR_TOO_LONG");
  if (!base::IsCleanText(*value)) throw Refusal("ERR_BAD_TEXT");
  return *value;
}

void Form::Add(std::string_view piece) {
  const std::size_t equals = piece.find('=');
  if (equals == std::string_view::npos) return;
  fields_.emplace(base::PercentDecode(piece.substr(0, equals)),
                  base::PercentDecode(piece.substr(equals + 1)));
}

}  // namespace marovane
