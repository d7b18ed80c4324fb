// Traditional and simplified characters through OpenCC.
#pragma once

#include <memory>

#include "platform/chinese.h"

namespace marovane {

/// Converts with the tables s2t and t2s of OpenCC, each character by itself. The tables are loaded at the
/// first call that needs them; RunTimeError when they are not installed. Serves one thread.
class OpenCcConverter : public ChineseConverter {
 public:
  OpenCcConverter();
  ~OpenCcConverter() override;
  OpenCcConverter(const OpenCcConverter&) = delete;
  OpenCcConverter& operator=(const OpenCcConverter&) = delete;

  std::string ToSimplified(std::string_view text) const override;
  std::string ToTraditional(std::string_view text) const override;

 private:
  class Direction;
  std::unique_ptr<Direction> toSimplified_;
  std::unique_ptr<Direction> toTraditional_;
};

}  // namespace marovane
