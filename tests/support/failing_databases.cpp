#include "tests/support/failing_databases.h"

#include <utility>

namespace marovane {

namespace {

class FailingDatabase : public base::Database {
 public:
  FailingDatabase(FailingDatabases& owner, std::unique_ptr<base::Database> database)
      : owner_(owner), database_(std::move(database)) {}

  void Run(std::string_view sql, const std::vector<base::DbValue>& parameters,
           const std::function<void(const base::DbRow&)>& onRow) override {
    Step(std::string(sql));
    database_->Run(sql, parameters, onRow);
  }
  void RunScript(const std::string& script) override {
    Step(script);
    database_->RunScript(script);
  }

 private:
  void Step(std::string statement) {
    owner_.statements.push_back(std::move(statement));
    owner_.fault.Step("statement " + owner_.statements.back());
  }

  FailingDatabases& owner_;
  std::unique_ptr<base::Database> database_;
};

}  // namespace

std::unique_ptr<base::Database> FailingDatabases::Open(const std::filesystem::path& path, Mode mode) {
  return std::make_unique<FailingDatabase>(*this, databases_.Open(path, mode));
}

std::unique_ptr<base::Database> FailingDatabases::Create(const std::filesystem::path& path) {
  return std::make_unique<FailingDatabase>(*this, databases_.Create(path));
}

}  // namespace marovane
