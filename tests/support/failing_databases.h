// Databases that record their statements, and fail or die at a chosen one.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/database.h"
#include "tests/support/fault.h"

namespace marovane {

/// Passes everything on to other databases. Each statement or script is a step of the fault, over all
/// databases that were opened here. It must outlive them.
class FailingDatabases : public base::Databases {
 public:
  explicit FailingDatabases(base::Databases& databases) : databases_(databases) {}
  std::unique_ptr<base::Database> Open(const std::filesystem::path& path, Mode mode) override {
    return std::make_unique<Failing>(*this, databases_.Open(path, mode));
  }
  std::unique_ptr<base::Database> Create(const std::filesystem::path& path) override {
    return std::make_unique<Failing>(*this, databases_.Create(path));
  }

  Fault fault;
  std::vector<std::string> statements;  ///< in the order in which they were run

 private:
  class Failing : public base::Database {
   public:
    Failing(FailingDatabases& owner, std::unique_ptr<base::Database> database)
        : owner_(owner), database_(std::move(database)) {}
    void Run(std::string_view sql, const std::vector<base::DbValue>& parameters,
             const std::function<void(const base::DbRow&)>& onRow) override {
      owner_.Step(std::string(sql));
      database_->Run(sql, parameters, onRow);
    }
    void RunScript(const std::string& script) override {
      owner_.Step(script);
      database_->RunScript(script);
    }

   private:
    FailingDatabases& owner_;
    std::unique_ptr<base::Database> database_;
  };

  void Step(const std::string& statement) {
    statements.push_back(statement);
    fault.Step("statement " + statement);
  }

  base::Databases& databases_;
};

}  // namespace marovane
