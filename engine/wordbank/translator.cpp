#include "engine/wordbank/translator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"
#include "engine/text/token.h"

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

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
bool IsAllAscii(std::string_view text) { return std::all_of(text.begin(), text.end(), IsAscii); }
bool IsBlank(char c) { return base::kWhiteSpace.find(c) != std::string_view::npos; }
bool IsWordByte(char c) { return tolvex::IsDigit(c) || (IsAscii(c) && tolvex::IsLetter(c)) || c == '\''; }

// Bytes of the word of letters and digits at the front; 1 also when there is none.
std::size_t AsciiWordSize(std::string_view text) {
  std::size_t size = 1;
  while (IsWordByte(text[0]) && size < text.size() && IsWordByte(text[size])) ++size;
  return size;
}

// Bytes up to the next blank, sign or longer word of letters: a single letter may begin a Chinese word.
std::size_t ChineseSize(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size()) {
    const std::string_view rest = text.substr(size);
    if (IsAscii(rest[0]) && (!IsWordByte(rest[0]) || AsciiWordSize(rest) > 1)) break;
    ++size;
  }
  return size;
}

constexpr int kUnknown = 250;
constexpr int kEachWord = 15;  // long words are likelier than the product of their parts

struct Entry {
  std::string_view english;
  char part = 0;
  int rarity = 0;
  std::string_view all;
};

Entry EntryOf(std::string_view text) {
  const auto mark = text.find('\t');
  const auto all = text.find('\t', mark + 1);
  Entry entry{text.substr(0, mark), text[mark + 1], kUnknown, text.substr(all + 1)};
  std::from_chars(text.data() + mark + 2, text.data() + all, entry.rarity);
  return entry;
}

}  // namespace

void Translator::SegmentChinese(std::string_view text, std::vector<std::string_view>& segments) const {
  struct Cut {
    int cost = std::numeric_limits<int>::max();
    std::size_t from = 0;
  };
  std::vector<Cut> cuts(text.size() + 1);
  cuts[0].cost = 0;
  for (std::size_t begin = 0; begin < text.size(); ++begin) {
    if (cuts[begin].cost == std::numeric_limits<int>::max()) continue;
    std::size_t end = begin;
    for (std::size_t signs = 0; signs < kLongestChineseWord && end < text.size(); ++signs) {
      end += base::NextUtf8(text, end).length;
      const auto found = words_.Find(text.substr(begin, end - begin));
      if (!found && signs > 0) continue;
      const int cost = cuts[begin].cost + kEachWord + (found ? EntryOf(*found).rarity : kUnknown);
      if (cost < cuts[end].cost) cuts[end] = {cost, begin};
    }
  }
  const std::size_t first = segments.size();
  for (std::size_t end = text.size(); end > 0; end = cuts[end].from) {
    segments.push_back(text.substr(cuts[end].from, end - cuts[end].from));
  }
  std::reverse(segments.begin() + static_cast<std::ptrdiff_t>(first), segments.end());
}

std::vector<std::string_view> Translator::Segment(std::string_view text) const {
  std::vector<std::string_view> segments;
  while (!text.empty()) {
    std::size_t size = 1;
    if (IsBlank(text[0]) || (IsAscii(text[0]) && !IsWordByte(text[0]))) {
      if (!IsBlank(text[0])) segments.push_back(text.substr(0, 1));
    } else if (const std::size_t word = AsciiWordSize(text); word > 1) {
      segments.push_back(text.substr(0, word));
      size = word;
    } else {
      size = ChineseSize(text);
      SegmentChinese(text.substr(0, size), segments);
    }
    text.remove_prefix(size);
  }
  return segments;
}

Piece Translator::PieceOf(std::string_view segment) const {
  const std::string_view sign = AsciiSign(segment);
  if (!sign.empty()) return {segment, base::Trim(sign, base::kWhiteSpace)};
  const auto found = IsAllAscii(segment) ? std::nullopt : words_.Find(segment);
  if (!found) return {segment, std::string(segment)};
  const Entry entry = EntryOf(*found);
  return {segment, std::string(entry.english), entry.part};
}

std::string Translator::Translate(std::string_view chinese) const {
  const std::string_view text = base::Trimmed(chinese, base::kWhiteSpace);
  const auto whole = IsAllAscii(text) ? std::nullopt : words_.Find(text);
  if (whole) return std::string(EntryOf(*whole).all);
  std::vector<Piece> pieces;
  for (const std::string_view segment : Segment(text)) pieces.push_back(PieceOf(segment));
  return MakeSentence(pieces, forms_);
}

}  // namespace wexbin
