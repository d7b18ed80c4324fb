// The error-text database: categories and codes of errors, read only.
#pragma once

#include <memory>
#include <string>

#include "platform/database.h"

struct Program;

class ErrListDb {
 public:
  explicit ErrListDb(Program& program) : program_(program) {}

  /// Text of an error code for the user; "" for an unknown code. Throws RunTimeError.
  std::string Outline(const std::string& errcode);

 private:
  Database& Db();

  Program& program_;
  std::unique_ptr<Database> db_;
};

/// Reads the categories once, so that the first real query finds the database open. Swallows every error.
void WarmUpErrListDb(Program& program);
