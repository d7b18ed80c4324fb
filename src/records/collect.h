// Rows of a statement as values.
#pragma once

#include <optional>
#include <type_traits>
#include <vector>

#include "base/database.h"

namespace marovane {

/// All rows of a statement, each made into a value.
/// @param make from a `const base::DbRow&`
template <class Make>
auto Collect(base::Database& db, std::string_view sql, const std::vector<base::DbValue>& parameters,
             Make make) {
  std::vector<std::invoke_result_t<Make, const base::DbRow&>> values;
  db.Run(sql, parameters, [&](const base::DbRow& row) { values.push_back(make(row)); });
  return values;
}

/// The first row; nothing without rows.
template <class Make>
auto FindFirst(base::Database& db, std::string_view sql, const std::vector<base::DbValue>& parameters,
               Make make) {
  std::optional<std::invoke_result_t<Make, const base::DbRow&>> first;
  db.Run(sql, parameters, [&](const base::DbRow& row) {
    if (!first) first = make(row);
  });
  return first;
}

}  // namespace marovane
