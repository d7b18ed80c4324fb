#include "engine/databuild/source_files.h"

#include <fmt/format.h>

#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "base/error.h"

namespace tolvex::databuild {

void ReadLines(std::istream& in, std::string_view source, const LineReader& read) {
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    try {
      read(line);
    } catch (const std::out_of_range&) {
      throw base::Error(fmt::format("{}:{}: too few fields: {}", source, number, line));
    } catch (const std::runtime_error& error) {
      throw base::Error(fmt::format("{}:{}: {}: {}", source, number, error.what(), line));
    }
  }
}

void ReadLines(const std::filesystem::path& path, const LineReader& read) {
  std::ifstream in(path);
  if (!in) throw base::Error("cannot read " + path.string());
  ReadLines(in, path.string(), read);
}

std::vector<std::string> SplitAtBlanks(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> fields;
  for (std::string field; in >> field;) fields.push_back(field);
  return fields;
}

std::vector<std::string> SplitAtBlanks(const std::string& line, std::size_t count) {
  auto fields = SplitAtBlanks(line);
  if (fields.size() != count) throw base::Error(fmt::format("{} words expected", count));
  return fields;
}

std::size_t Number(std::string_view field, int radix) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number, radix);
  if (error != std::errc() || end != field.data() + field.size())
    throw base::Error(fmt::format("not a number: {}", field));
  return number;
}

}  // namespace tolvex::databuild
