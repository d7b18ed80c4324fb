#include "server/teacher/roster.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>

#include "base/cp950.h"
#include "base/text.h"
#include "base/utf8.h"
#include "protocol/account.h"

namespace server {
namespace {

constexpr std::size_t kMostPupils = 200;
constexpr std::size_t kMostErrors = 20;
constexpr std::size_t kLongestName = 40;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Record {
  std::size_t line = 1;  ///< where it begins
  std::vector<std::string> fields = std::vector<std::string>(1);
  bool isOpen = false;  ///< its quote was never closed
};

/// Takes one record off the front.
Record PopRecord(std::string_view& text, std::size_t& line) {
  Record record{line};
  while (!text.empty()) {
    const char sign = text[0];
    const bool isDoubled = record.isOpen && sign == '"' && text.substr(1).starts_with('"');
    text.remove_prefix(isDoubled ? 2 : 1);
    line += sign == '\n' ? 1 : 0;
    if (isDoubled) {
      record.fields.back() += '"';
    } else if (sign == '"' && (record.isOpen || record.fields.back().empty())) {
      record.isOpen = !record.isOpen;
    } else if (sign == ',' && !record.isOpen) {
      record.fields.emplace_back();
    } else if (sign == '\n' && !record.isOpen) {
      break;
    } else {
      record.fields.back() += sign;
    }
  }
  return record;
}

/// The field in UTF-8; nothing for bytes that are no text.
std::optional<std::string> Decoded(const std::string& bytes, bool isUtf8) {
  std::string text = base::Trim(isUtf8 ? bytes : base::FromCp950(bytes, base::Undecodable::kQuestionMark),
                                base::kWhiteSpace);
  const bool isWhole =
      std::count(text.begin(), text.end(), '?') == std::count(bytes.begin(), bytes.end(), '?');
  return isWhole && base::IsCleanText(text) ? std::optional(text) : std::nullopt;
}

class Reader {
 public:
  explicit Reader(std::string_view bytes)
      : text_(bytes.substr(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0)),
        isUtf8_(base::IsUtf8(text_)) {}

  Roster Read() {
    std::size_t line = 1;
    while (!text_.empty()) AddRecord(PopRecord(text_, line));
    if (roster_.entries.empty() && roster_.errors.empty()) AddError(1, "檔案裡沒有學生");
    if (roster_.entries.size() > kMostPupils) AddError(1, fmt::format("一次最多匯入 {} 位學生", kMostPupils));
    return std::move(roster_);
  }

 private:
  void AddError(std::size_t line, const std::string& what) {
    if (roster_.errors.size() < kMostErrors)
      roster_.errors.push_back(fmt::format("第 {} 行：{}", line, what));
  }

  void AddRecord(Record record) {
    if (record.isOpen) return AddError(record.line, "引號「\"」沒有結束");
    for (std::string& field : record.fields) {
      auto text = Decoded(field, isUtf8_);
      if (!text) return AddError(record.line, "有無法辨識的文字，請將檔案存成 UTF-8 或 Big5 的 CSV");
      field = std::move(*text);
    }
    const auto& fields = record.fields;
    if (std::all_of(fields.begin(), fields.end(), [](const auto& field) { return field.empty(); })) return;
    const bool isHeading = record.line == 1 && (fields[0] == "帳號" || fields[0] == "account");
    if (!isHeading) AddPupil(record.line, fields);
  }

  void AddPupil(std::size_t line, const std::vector<std::string>& fields) {
    if (fields.size() < 2 || fields.size() > 3) {
      return AddError(line, fmt::format("要有帳號、姓名、密碼 2 至 3 欄，這一行有 {} 欄", fields.size()));
    }
    RosterEntry entry{protocol::CleanAccount(fields[0]), fields[1], fields.size() == 3 ? fields[2] : ""};
    if (!protocol::IsAccountNumber(entry.account)) {
      return AddError(line,
                      fmt::format("帳號「{}」只能用英文字母、數字、「.」和「_」，最多 32 個字", fields[0]));
    }
    if (entry.name.empty()) return AddError(line, "沒有姓名");
    if (base::CountCharacters(entry.name) > kLongestName) {
      return AddError(line, fmt::format("姓名太長，最多 {} 個字", kLongestName));
    }
    if (!entry.password.empty() && !protocol::IsPassword(entry.password)) {
      return AddError(line, fmt::format("密碼要有 {} 至 {} 個英文字母、數字或符號",
                                        protocol::kShortestPassword, protocol::kLongestPassword));
    }
    if (!seen_.insert(entry.account).second) {
      return AddError(line, fmt::format("帳號「{}」在檔案裡出現兩次", entry.account));
    }
    roster_.entries.push_back(std::move(entry));
  }

  std::string_view text_;
  bool isUtf8_;
  Roster roster_;
  std::set<std::string> seen_;
};

}  // namespace

Roster ReadRoster(std::string_view bytes) { return Reader(bytes).Read(); }

}  // namespace server
