#include "server/teacher/form_reader.h"

#include <fmt/format.h>

#include "base/cp950.h"
#include "base/day.h"
#include "base/text.h"
#include "base/utf8.h"

namespace server {

std::string FormReader::Typed(const std::string& name, std::string_view label, std::size_t limit,
                              bool mayHaveLines) {
  const std::string bytes = form_.Find(name).value_or("");
  if (!base::IsCleanText(bytes, mayHaveLines ? "\r\n\t" : "")) {
    errors_.push_back(fmt::format("{}含有無法辨識的字元", label));
    return base::IsUtf8(bytes) ? bytes : "";
  }
  std::string text = base::Trim(bytes, base::kWhiteSpace);
  if (base::CountCharacters(text) > limit)
    errors_.push_back(fmt::format("{}太長，最多 {} 個字", label, limit));
  return text;
}

std::string FormReader::Line(const std::string& name, std::string_view label, std::size_t limit) {
  const std::size_t before = errors_.size();
  std::string text = Typed(name, label, limit, false);
  if (errors_.size() > before) return text;
  if (text.empty()) errors_.push_back(fmt::format("請輸入{}", label));
  const std::string_view sign = base::FirstNotInCp950(text);
  if (!sign.empty())
    errors_.push_back(fmt::format("{}裡的「{}」學生的程式無法顯示，請換一個字", label, sign));
  return text;
}

std::string FormReader::Text(const std::string& name, std::string_view label, std::size_t limit) {
  return Typed(name, label, limit, true);
}

std::string FormReader::Day(const std::string& name, std::string_view label) {
  std::string typed = base::Trim(form_.Find(name).value_or(""), base::kWhiteSpace);
  const auto day = base::IsoFromShown(base::Replace(typed, "-", "/"));
  if (!day) errors_.push_back(fmt::format("{}要寫成 2026/11/5 這樣的日期", label));
  return day.value_or(base::IsCleanText(typed) ? typed : "");
}

}  // namespace server
