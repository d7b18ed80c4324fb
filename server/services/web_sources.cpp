#include "server/services/web_sources.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "base/text.h"
#include "base/utf8.h"
#include "server/services/log.h"

namespace server {
namespace {

constexpr std::string_view kSeparator = "||";
constexpr std::size_t kFields = 4;

std::string Site(const char* name, const char* kind, const char* address) {
  return fmt::format("{}||{}||en||{}##String2chk##", name, kind, address);
}

const WebSources& PublicSites() {
  static const WebSources sites{
      Site("Tatoeba 中英例句", "cn", "https://tatoeba.org/zh-tw/sentences/search?from=cmn&to=eng&query="),
      Site("Wiktionary 維基詞典", "cn", "https://en.wiktionary.org/w/index.php?search="),
      Site("MDBG 中英字典", "cn", "https://www.mdbg.net/chinese/dictionary?page=worddict&wdqb="),
      Site("Tatoeba 英中例句", "en", "https://tatoeba.org/zh-tw/sentences/search?from=eng&to=cmn&query="),
      Site("SkELL 語料庫例句", "en", "https://skell.sketchengine.eu/#result?lang=en&f=concordance&query="),
      Site("Wiktionary 維基詞典", "en", "https://en.wiktionary.org/w/index.php?search="),
      Site("Wikipedia 維基百科全文", "en", "https://en.wikipedia.org/w/index.php?fulltext=1&search="),
  };
  return sites;
}

std::vector<std::string> Fields(std::string_view line) {
  auto fields = base::Split(line, kSeparator);
  for (auto& field : fields) field = base::Trim(field, base::kWhiteSpace);
  return fields;
}

// Nothing but pages of the web, and nothing that would part the reply in other places.
bool IsRecord(const std::vector<std::string>& fields, std::string_view line) {
  return fields.size() == kFields && base::IsCleanText(line) && line.find("<@>") == std::string_view::npos &&
         std::ranges::none_of(fields, [](const auto& field) { return field.empty(); }) &&
         (fields.back().starts_with("http://") || fields.back().starts_with("https://"));
}

}  // namespace

WebSources ReadWebSources(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return PublicSites();
  std::ifstream lines(file);
  if (!lines) throw std::runtime_error("cannot read " + file.string());
  WebSources sources;
  for (std::string line; std::getline(lines, line);) {
    line = base::Trim(line, base::kWhiteSpace);
    if (line.empty() || line.starts_with(';')) continue;
    const auto fields = Fields(line);
    if (IsRecord(fields, line)) {
      sources.push_back(fmt::format("{}", fmt::join(fields, kSeparator)));
    } else {
      LogError("{}: no site: {}", file.string(), line);
    }
  }
  return sources;
}

}  // namespace server
