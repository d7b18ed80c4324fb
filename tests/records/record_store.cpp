#include "tests/records/record_store.h"

#include <algorithm>

#include "tests/support/temp_folder.h"

namespace marovane {

namespace fs = std::filesystem;

void CreateRecords(base::Databases& databases, const fs::path& path, std::size_t version) {
  fs::create_directories(path.parent_path());
  std::vector<fs::path> steps;
  for (const auto& step : fs::directory_iterator(SCHEMA_FOLDER)) steps.push_back(step.path());
  std::ranges::sort(steps);
  if (version > 0) steps.resize(version);
  const auto db = databases.Create(path);
  for (const auto& step : steps) db->RunScript(ReadFile(step));
}

void CreateErrList(base::Databases& databases, const fs::path& path,
                   const std::vector<std::pair<std::string, std::string>>& outlines) {
  fs::create_directories(path.parent_path());
  const auto db = databases.Create(path);
  db->RunScript(
      "create table errtype (errtype_id text, errtype text); insert into errtype values ('VT', '時態');"
      "create table errmain (errcode text, outline text)");
  for (const auto& [code, outline] : outlines) {
    const base::DbValue text = outline.empty() ? base::DbValue{} : base::DbValue{outline};
    db->Run("insert into errmain values (?, ?)", {code, text});
  }
}

std::vector<std::string> Rows(base::Databases& databases, const fs::path& path, const std::string& sql) {
  std::vector<std::string> rows;
  const auto db = databases.Open(path, base::Databases::Mode::kReadOnly);
  db->Run(sql, {}, [&](const base::DbRow& row) {
    std::string line;
    for (int i = 0; i < row.Count(); ++i) {
      line += (i == 0 ? "" : "|") + (row.IsNull(i) ? std::string("NULL") : row.Text(i));
    }
    rows.push_back(line);
  });
  return rows;
}

}  // namespace marovane
