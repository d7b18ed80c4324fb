#include "sync/form_body.h"

#include "base/cp950.h"
#include "base/percent.h"
#include "base/text.h"

void AddField(std::string& body, std::string_view name, std::string_view value) {
  if (!body.empty()) body += '&';
  body += base::FormEncode(name) + "=" + base::FormEncode(value);
}

std::string Big5FormText(std::string_view text) {
  const std::string lines = base::Replace(base::Replace(text, "\r\n", "\n"), "\n", "\r\n");
  return base::ToCp950(lines, base::Unencodable::kReference);
}
