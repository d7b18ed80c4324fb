// Databases that record their statements, and fail or die at a chosen one.
#pragma once

#include <string>
#include <vector>

#include "base/database.h"
#include "tests/support/fault.h"

namespace marovane {

/// Passes everything on to other databases. Each statement or script is a step of the fault, over all
/// databases that were opened here. It must outlive them.
class FailingDatabases : public base::Databases {
 public:
  explicit FailingDatabases(base::Databases& databases) : databases_(databases) {}
  std::unique_ptr<base::Database> Open(const std::filesystem::path& path, Mode mode) override;
  std::unique_ptr<base::Database> Create(const std::filesystem::path& path) override;

  Fault fault;
  std::vector<std::string> statements;  ///< in the order in which they were run

 private:
  base::Databases& databases_;
};

}  // namespace marovane
