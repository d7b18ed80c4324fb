#include "engine/databuild/source_files.h"

#include <sstream>
#include <stdexcept>

namespace tolvex::databuild {

std::ifstream Open(const std::filesystem::path& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return in;
}

std::vector<std::string> SplitAtBlanks(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> fields;
  for (std::string field; in >> field;) fields.push_back(field);
  return fields;
}

}  // namespace tolvex::databuild
