#include "engine/wordbank/translator.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "engine/text/token.h"
#include "engine/wordbank/sentence_maker.h"

namespace wexbin {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 22> kSigns = {
    {{"。", "."},  {"，", ","}, {"、", ","},  {"？", "?"},  {"！", "!"},  {"；", ";"},
     {"：", ":"},  {"．", "."}, {"「", "\""}, {"」", "\""}, {"『", "\""}, {"』", "\""},
     {"“", "\""},  {"”", "\""}, {"《", "\""}, {"》", "\""}, {"（", "("},  {"）", ")"},
     {"…", "..."}, {"　", " "}, {"‘", "'"},   {"’", "'"}}};

std::string_view AsciiSign(std::string_view sign) {
  for (const auto& [wide, narrow] : kSigns) {
    if (wide == sign) return narrow;
  }
  return {};
}

// Bytes of the first sign; a byte that starts no sign counts as one.
std::size_t SignSize(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t size = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc0 ? 2 : 1;
  return std::min(size, text.size());
}

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
bool IsAllAscii(std::string_view text) { return std::all_of(text.begin(), text.end(), IsAscii); }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsWordByte(char c) { return tolvex::IsDigit(c) || (IsAscii(c) && tolvex::IsLetter(c)) || c == '\''; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

std::string_view Translator::NextSegment(std::string_view text) const {
  if (IsAscii(text[0])) {
    std::size_t size = 1;
    while (IsWordByte(text[0]) && size < text.size() && IsWordByte(text[size])) ++size;
    if (size > 1 || !IsWordByte(text[0])) return text.substr(0, size);
  }
  std::size_t longest = 0;
  std::size_t size = 0;
  for (std::size_t signs = 0; signs < kLongestChineseWord && size < text.size(); ++signs) {
    size += SignSize(text.substr(size));
    if (words_.Find(text.substr(0, size))) longest = size;
  }
  return text.substr(0, longest == 0 ? SignSize(text) : longest);
}

std::vector<std::string_view> Translator::Segment(std::string_view text) const {
  std::vector<std::string_view> segments;
  while (!text.empty()) {
    const std::string_view segment = NextSegment(text);
    if (!IsBlank(segment[0])) segments.push_back(segment);
    text.remove_prefix(segment.size());
  }
  return segments;
}

std::string Translator::InSentence(std::string_view segment) const {
  const std::string_view sign = AsciiSign(segment);
  if (!sign.empty()) return std::string(Trimmed(sign));
  const auto found = IsAllAscii(segment) ? std::nullopt : words_.Find(segment);
  return std::string(found ? found->substr(0, found->find('\t')) : segment);
}

std::string Translator::Translate(std::string_view chinese) const {
  const std::string_view text = Trimmed(chinese);
  const auto whole = IsAllAscii(text) ? std::nullopt : words_.Find(text);
  if (whole) return std::string(whole->substr(whole->find('\t') + 1));
  std::vector<Piece> pieces;
  for (const std::string_view segment : Segment(text)) pieces.push_back({segment, InSentence(segment)});
  return MakeSentence(std::move(pieces));
}

}  // namespace wexbin
