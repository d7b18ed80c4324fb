#include "sync/form_body.h"

#include "base/cp950.h"
#include "base/text.h"

namespace marovane {

std::string Big5FormText(std::string_view text) {
  const std::string lines = base::Replace(base::Replace(text, "\r\n", "\n"), "\n", "\r\n");
  return base::ToCp950(lines, base::Unencodable::kReference);
}

}  // namespace marovane
