// Several statements as one.
#pragma once

#include "base/database.h"

namespace base {

/// Undoes what was done since it was made, unless it is committed. Let no events in meanwhile: what their
/// handlers write would be part of it.
class Transaction {
 public:
  explicit Transaction(Database& db) : db_(db) { db_.Run("begin immediate"); }
  ~Transaction() {
    if (!isOpen_) return;
    try {
      db_.Run("rollback");
    } catch (...) {
      return;  // the database has done so itself, or does when it is opened again
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    db_.Run("commit");
    isOpen_ = false;
  }

 private:
  Database& db_;
  bool isOpen_ = true;
};

}  // namespace base
