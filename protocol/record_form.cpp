#include "protocol/record_form.h"

#include <algorithm>

namespace protocol {
namespace {

constexpr std::size_t kLongest = 64;
constexpr std::string_view kPageFlags = "N12";
constexpr std::string_view kEssayStates = "NAY";

bool IsDigit(char sign) { return sign >= '0' && sign <= '9'; }

bool IsIdSign(char sign) {
  const char letter = static_cast<char>(sign | 0x20);
  return IsDigit(sign) || (letter >= 'a' && letter <= 'z') || sign == '.' || sign == '_' || sign == '-';
}

bool ContinuesCharacter(char byte) { return (byte & 0xC0) == 0x80; }

// A program whose clock is set before 2006 makes negative numbers.
bool IsNumber(std::string_view text) {
  if (text.size() > kLongest) return false;
  if (text.starts_with('-')) text.remove_prefix(1);
  return std::ranges::all_of(text, IsDigit);
}

bool IsName(std::string_view text) { return text.size() <= kLongest && std::ranges::all_of(text, IsIdSign); }

bool IsFlag(std::string_view text, std::string_view known) {
  return text.size() == 1 && known.find(text) != std::string_view::npos;
}

std::string CleanFlag(const std::string& text, std::string_view known) {
  return IsFlag(text, known) ? text : "N";
}

}  // namespace

bool IsWellFormed(const Row& row) {
  if (const auto* essay = std::get_if<EssayRow>(&row)) {
    return IsNumber(essay->essayId) && IsName(essay->workId) && IsFlag(essay->finalSet, kEssayStates);
  }
  const auto& sentence = std::get<SentenceRow>(row);
  return IsNumber(sentence.essayId) && IsNumber(sentence.essaySId) && IsFlag(sentence.haveHtm, kPageFlags);
}

Row Cleaned(Row row) {
  if (auto* essay = std::get_if<EssayRow>(&row)) {
    essay->essayId = CleanRecordId(essay->essayId);
    essay->workId = CleanRecordId(essay->workId);
    essay->finalSet = CleanFlag(essay->finalSet, kEssayStates);
  } else {
    auto& sentence = std::get<SentenceRow>(row);
    sentence.essayId = CleanRecordId(sentence.essayId);
    sentence.essaySId = CleanRecordId(sentence.essaySId);
    sentence.haveHtm = CleanFlag(sentence.haveHtm, kPageFlags);
  }
  return row;
}

// Databases clean their old rows alike (see the server's schema), and to them a text ends at a zero byte.
std::string CleanRecordId(std::string_view text) {
  std::string id;
  std::size_t characters = 0;
  for (const char sign : text.substr(0, text.find('\0'))) {
    if (!ContinuesCharacter(sign) && ++characters > kLongest) break;
    if (IsIdSign(sign)) id += sign;
  }
  return id;
}

}  // namespace protocol
