#include "records/salvage.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "base/day.h"
#include "base/files.h"
#include "base/transaction.h"
#include "core/program.h"
#include "core/provisioning.h"
#include "core/settings.h"
#include "platform/machine.h"
#include "platform/window_system.h"
#include "records/record_db.h"

namespace marovane {

namespace {

using Path = base::Files::Path;
using RowId = std::int64_t;

struct Table {
  std::string name;
  std::vector<std::string> columns;
  bool hasRowId = true;
  bool operator==(const Table&) const = default;
};

std::vector<Table> TablesOf(base::Database& db) {
  std::vector<Table> tables;
  db.Run(
      "select name, wr from pragma_table_list where schema = 'main' and type = 'table' and name not like "
      "'sqlite%' order by name",
      {}, [&](const base::DbRow& row) {
        tables.push_back({row.Text(0), {}, row.Number(1) == 0});
      });
  for (auto& table : tables) table.columns = db.Column("select name from pragma_table_info(?)", {table.name});
  return tables;
}

constexpr std::string_view kUploadFlags = "NYDR";

// A page of rubbish can look like rows.
bool IsPlausible(const Table& table, const std::vector<base::DbValue>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto* const text = std::get_if<std::string>(&values[i]);
    if (text == nullptr) return false;
    if (table.columns[i] == "sDate" && !base::ParseDate(*text)) return false;
    const bool isFlag = table.columns[i] == "upload";
    if (isFlag && (text->size() != 1 || kUploadFlags.find(*text) == std::string_view::npos)) return false;
  }
  return true;
}

class TableSalvage {
 public:
  TableSalvage(base::Database& from, base::Database& to, const Table& table)
      : from_(from),
        to_(to),
        table_(table),
        insert_(fmt::format("insert or ignore into {} values ({})", table.name,
                            fmt::join(std::vector<std::string>(table.columns.size(), "?"), ", "))) {}

  int Run() {
    if (table_.hasRowId) {
      Between(1, std::numeric_limits<RowId>::max() / 2);
    } else {
      Read("", {}, 0);
    }
    return rows_;
  }

 private:
  // The rowid of the row at which reading broke off: the latest that was read, or `none` before the first.
  // Nothing when all were read.
  std::optional<RowId> Read(const std::string& condition, const std::vector<base::DbValue>& bounds,
                            RowId none) {
    RowId latest = none;
    const char* const id = table_.hasRowId ? "rowid" : "0";
    try {
      from_.Run(fmt::format("select {}, * from {} {}", id, table_.name, condition), bounds,
                [&](const base::DbRow& row) {
                  latest = row.Number(0);
                  Keep(row);
                });
      return std::nullopt;
    } catch (const base::DamagedDatabase&) {
      --triesLeft_;
      return latest;
    }
  }

  // From both ends up to the damage; what is between is halved again and again.
  void Between(RowId low, RowId high) {
    if (low > high || triesLeft_ <= 0) return;
    const auto broken = Read("where rowid between ? and ? order by rowid", {low, high}, low - 1);
    if (!broken) return;
    const auto brokenBack =
        Read("where rowid > ? and rowid <= ? order by rowid desc", {*broken, high}, high + 1);
    if (!brokenBack) return;
    // With the last page damaged nobody knows how many rows there were.
    constexpr RowId kMostAfter = 100'000;
    const RowId first = *broken + 1;
    const RowId last = std::min(*brokenBack - 1, *broken + kMostAfter);
    if (first >= last) return;
    const RowId middle = first + (last - first) / 2;
    Between(first, middle);
    Between(middle + 1, last);
  }

  void Keep(const base::DbRow& row) {
    std::vector<base::DbValue> values;
    for (std::size_t i = 1; i <= table_.columns.size(); ++i) {
      const int column = static_cast<int>(i);
      base::DbValue& value = values.emplace_back();
      if (!row.IsNull(column)) value = row.Text(column);
    }
    if (!IsPlausible(table_, values)) return;
    to_.Run(insert_, values);
    ++rows_;
  }

  base::Database& from_;
  base::Database& to_;
  const Table& table_;
  std::string insert_;
  int rows_ = 0;
  int triesLeft_ = 5000;
};

bool IsDamaged(base::Databases& databases, const Path& path) {
  try {
    const auto db = databases.Open(path, base::Databases::Mode::kReadOnly);
    // A file that was emptied is an empty database to SQLite.
    return db->Text("pragma quick_check(1)") != "ok" || db->Number("pragma user_version") == 0;
  } catch (const base::DamagedDatabase&) {
    return true;
  }
}

// The damaged file with the first page of an empty one: the tables begin at the same pages in both.
std::string WithFirstPageOf(const std::string& empty, std::string damaged) {
  constexpr std::size_t kPageSizeAt = 16;  // two bytes, the higher first (SQLite's file format)
  constexpr std::size_t kValidForAt = 92;  // when it is not the change counter, the length of the file counts
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(empty.at(at)); };
  const std::size_t pageSize = byte(kPageSizeAt) * 256U + byte(kPageSizeAt + 1);
  // The schema needs all pages at which tables begin, even empty ones.
  damaged.resize(std::max(damaged.size(), empty.size()));
  damaged.replace(0, pageSize, empty, 0, pageSize);
  damaged.replace(kValidForAt, 4, "\xFF\xFF\xFF\xFF");
  return damaged;
}

class Mending {
 public:
  explicit Mending(Program& program)
      : program_(program),
        files_(program.machine.files),
        records_(ConnectionPath(program.app.gConnRecords)),
        salvaged_(records_.string() + ".salvaged"),
        workshop_(records_.parent_path() / "salvage") {}

  void Run() {
    if (!files_.FileExists(records_)) {
      if (files_.FileExists(salvaged_)) PutInPlace();
      return;
    }
    if (!IsDamaged(program_.machine.databases, records_)) return;
    const int rows = MakeSalvaged();
    const std::string aside = PutInPlace();
    Show(fmt::format(
        "您的造句記錄檔已經損毀。\r\n\r\n損毀的檔案保留在 {}。\r\n還讀得到的 {} 筆資料已經搬到新的記錄檔；"
        "其他曾經上傳的記錄，會在同步時從伺服器取回。",
        aside, rows));
  }
  void Show(const std::string& text) { program_.machine.windows.SystemBox("Marovane", text); }

 private:
  int MakeSalvaged() {
    ClearWorkshop();
    UnpackRecordsInto(program_, workshop_);
    const Path fresh = workshop_ / "Marovane.mdb";
    const std::string empty = files_.Read(fresh);
    const int rows = SalvageRows(*OpenDamaged(empty),
                                 *program_.machine.databases.Open(fresh, base::Databases::Mode::kReadWrite));
    files_.Rename(fresh, salvaged_);  // its last connection is closed: there is no log beside it
    return rows;
  }

  std::unique_ptr<base::Database> OpenDamaged(const std::string& empty) {
    try {
      auto db = program_.machine.databases.Open(records_, base::Databases::Mode::kReadOnly);
      if (!TablesOf(*db).empty()) return db;
    } catch (const base::DamagedDatabase&) {
      // its first page is gone
    }
    const Path patched = workshop_ / "patched.mdb";
    files_.Write(patched, WithFirstPageOf(empty, files_.Read(records_)), true);
    return program_.machine.databases.Open(patched, base::Databases::Mode::kReadOnly);
  }

  // The new file is whole before the old one goes.
  std::string PutInPlace() {
    std::string aside = SetRecordsAside(program_);
    files_.Rename(salvaged_, records_);
    WriteNeedSync(program_, "Y");
    ClearWorkshop();
    return aside;
  }

  void ClearWorkshop() {
    for (const auto& name : files_.List(workshop_)) files_.Delete(workshop_ / name);
  }

  Program& program_;
  base::Files& files_;
  const Path records_, salvaged_, workshop_;
};

}  // namespace

int SalvageRows(base::Database& damaged, base::Database& empty) {
  int rows = 0;
  base::Transaction transaction(empty);
  const auto there = TablesOf(damaged);
  for (const auto& table : TablesOf(empty)) {
    if (std::ranges::count(there, table) > 0) rows += TableSalvage(damaged, empty, table).Run();
  }
  transaction.Commit();
  return rows;
}

void MendRecords(Program& program) {
  Mending mending(program);
  try {
    mending.Run();
  } catch (const RunTimeError& error) {
    mending.Show(fmt::format(
        "您的造句記錄檔已經損毀，而且現在無法修復（{}）。\r\n\r\n請檢查磁碟空間，然後重新啟動程式。"
        "記錄檔還在原處，沒有刪除任何資料。",
        error.what()));
  }
}

}  // namespace marovane
