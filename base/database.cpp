#include "base/database.h"

#include <utility>

namespace base {

std::vector<std::string> DbRow::Texts() const {
  std::vector<std::string> texts;
  for (int i = 0; i < Count(); ++i) texts.push_back(Text(i));
  return texts;
}

std::vector<std::string> Database::Column(std::string_view sql, const std::vector<DbValue>& parameters) {
  std::vector<std::string> texts;
  Run(sql, parameters, [&](const DbRow& row) { texts.push_back(row.Text(0)); });
  return texts;
}

std::optional<std::string> Database::Text(std::string_view sql, const std::vector<DbValue>& parameters) {
  auto texts = Column(sql, parameters);
  return texts.empty() ? std::nullopt : std::optional(std::move(texts.front()));
}

int Database::Number(std::string_view sql, const std::vector<DbValue>& parameters) {
  std::optional<std::int64_t> number;
  Run(sql, parameters, [&](const DbRow& row) {
    if (!number) number = row.Number(0);
  });
  return static_cast<int>(number.value_or(0));
}

}  // namespace base
