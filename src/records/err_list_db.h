// The error-text database: categories and codes of errors, read only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/database.h"

namespace marovane {

struct Program;

struct ErrorCategory {
  std::string id;  ///< the leading characters of the codes of the category
  std::string name;
};

struct ErrorCode {
  std::string errcode;
  std::string outline;  ///< "Null" when the catalogue has none
};

class ErrListDb {
 public:
  explicit ErrListDb(Program& program) : program_(program) {}

  /// Text of an error code for the user; "" for an unknown code. Throws RunTimeError.
  std::string Outline(const std::string& errcode);
  /// All categories, in order of their ids.
  std::vector<ErrorCategory> Categories();
  /// Codes that begin with the id of a category, in order.
  std::vector<ErrorCode> CodesOf(const std::string& category);

 private:
  base::Database& Db();

  Program& program_;
  std::unique_ptr<base::Database> db_;
};

}  // namespace marovane
