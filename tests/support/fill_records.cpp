// Fills a record database for looking at the windows: fill_records <Marovane.mdb> [last day] [sentences]
// [days]
#include <fmt/format.h>

#include "base/day.h"
#include "base/sqlite.h"
#include "tests/support/realistic_records.h"

int main(int argc, char** argv) {
  using namespace marovane;
  const auto lastDay = base::ParseDate(argc < 3 ? "" : argv[2]);
  if (!lastDay) {
    fmt::print(stderr, "fill_records <Marovane.mdb> <last day> [sentences] [days]\n");
    return 64;
  }
  RealisticRecords wish;
  wish.lastDay = *lastDay;
  if (argc > 3) wish.sentences = std::stoi(argv[3]);
  if (argc > 4) wish.days = std::stoi(argv[4]);
  try {
    base::SqliteDatabases databases;
    FillRealistically(*databases.Open(argv[1], base::Databases::Mode::kReadWrite), wish);
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
  return 0;
}
