#include "core/big5_file.h"

#include "base/cp950.h"
#include "base/files.h"

namespace marovane {

std::string ReadBig5File(const base::Files& files, const std::string& path) {
  constexpr std::size_t kSkipped = 2;
  const std::string bytes = files.Read(path);
  return bytes.size() <= kSkipped ? "" : base::FromCp950(std::string_view(bytes).substr(kSkipped));
}

}  // namespace marovane
