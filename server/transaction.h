// A transaction that is undone unless it is committed.
#pragma once

#include <exception>

#include "server/sqlite.h"

namespace marovane {

class Transaction {
 public:
  explicit Transaction(Sqlite& database) : database_(database) { database_.Run("BEGIN IMMEDIATE"); }
  ~Transaction() {
    if (!isOpen_) return;
    try {
      database_.Run("ROLLBACK");
    } catch (const std::exception&) {
      return;  // the database has done so itself
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    database_.Run("COMMIT");
    isOpen_ = false;
  }

 private:
  Sqlite& database_;
  bool isOpen_ = true;
};

}  // namespace marovane
