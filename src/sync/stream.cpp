#include "sync/stream.h"

#include <fmt/format.h>

#include "base/text.h"
#include "platform/run_time_error.h"
#include "sync/wire_text.h"

namespace marovane {

namespace {

constexpr std::string_view kItemSeparator = "<@>";
constexpr std::string_view kFinish = "FINISH";
constexpr std::string_view kLastId = "LASTID:";

std::vector<std::string> ReadRecord(const Stream& stream, const std::string& item) {
  auto fields = base::Split(item, stream.separator);
  if (fields.size() != stream.fields) {
    throw RunTimeError(fmt::format("a record of the stream {} has {} fields: {}", stream.tp, fields.size(),
                                   item.substr(0, 200)));
  }
  for (auto& field : fields) field = PlainField(field);
  return fields;
}

}  // namespace

StreamPage ReadStreamPage(const Stream& stream, const std::string& reply) {
  StreamPage page;
  for (const auto& item : base::Split(reply, kItemSeparator)) {
    if (item.empty()) break;
    if (item.starts_with(kFinish)) {
      page.nextId.emplace(1, '0');
    } else if (item.starts_with(kLastId)) {
      page.nextId = base::Trim(item.substr(kLastId.size()));
    } else {
      page.records.push_back(ReadRecord(stream, item));
    }
    if (page.nextId) break;
  }
  return page;
}

}  // namespace marovane
