#include "tests/support/failing_databases.h"

#include <utility>

namespace {

class FailingDatabase : public Database {
 public:
  FailingDatabase(FailingDatabases& owner, std::unique_ptr<Database> database)
      : owner_(owner), database_(std::move(database)) {}

  void Run(std::string_view sql, const std::vector<DbValue>& parameters,
           const std::function<void(const DbRow&)>& onRow) override {
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
  std::unique_ptr<Database> database_;
};

}  // namespace

std::unique_ptr<Database> FailingDatabases::Open(const std::filesystem::path& path, Mode mode) {
  return std::make_unique<FailingDatabase>(*this, databases_.Open(path, mode));
}

std::unique_ptr<Database> FailingDatabases::Create(const std::filesystem::path& path) {
  return std::make_unique<FailingDatabase>(*this, databases_.Create(path));
}
