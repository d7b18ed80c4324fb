#include "core/big5_file.h"

#include "base/files.h"
#include "platform/text_encoding.h"

std::string ReadBig5File(const base::Files& files, const std::string& path) {
  constexpr std::size_t kSkipped = 2;
  const std::string bytes = files.Read(path);
  return bytes.size() <= kSkipped ? "" : FromBig5(std::string_view(bytes).substr(kSkipped));
}
