#include "core/typed_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/text.h"
#include "base/utf16.h"
#include "base/utf8.h"
#include "core/text_utility.h"
#include "protocol/sentences.h"

namespace marovane {

namespace {

constexpr char32_t kLineSeparator = 0x2028;
constexpr char32_t kParagraphSeparator = 0x2029;

bool IsLineEnd(char32_t sign) {
  return sign == '\n' || sign == '\r' || sign == kLineSeparator || sign == kParagraphSeparator;
}

bool IsBlank(char32_t sign) {
  return sign == '\t' || utf8proc_category(static_cast<utf8proc_int32_t>(sign)) == UTF8PROC_CATEGORY_ZS;
}

// Controls, and what the Unicode Standard lets a program leave out without a trace.
bool IsInvisible(char32_t sign) {
  const auto code = static_cast<utf8proc_int32_t>(sign);
  std::array<utf8proc_int32_t, 4> ignored{};
  return utf8proc_category(code) == UTF8PROC_CATEGORY_CC ||
         utf8proc_decompose_char(code, ignored.data(), ignored.size(), UTF8PROC_IGNORE, nullptr) == 0;
}

// Signs whose plain form Unicode does not know, by that form.
using SignsOfForm = std::pair<std::string_view, std::u32string_view>;
constexpr SignsOfForm kPlainForms[] = {
    {"'", U"‘’‚‛′´ʼ"},
    {"\"", U"“”„‟″«»「」『』"},
    {".", U"。"},
    {",", U"、"},
    {"-", U"‐‑‒–−·"},
    {" - ", U"—―"},
    {"/", U"⁄÷"},
    {"x", U"×"},
    {"$", U"€£¥"},
    {" cents", U"¢"},
    {" degrees", U"°"},
    {" degrees Celsius", U"℃"},
    {" degrees Fahrenheit", U"℉"},
    {"", U"•™®©"},
    {"ss", U"ß"},
    {"ae", U"æ"},
    {"Ae", U"Æ"},
    {"oe", U"œ"},
    {"Oe", U"Œ"},
    {"o", U"ø"},
    {"O", U"Ø"},
    {"l", U"ł"},
    {"L", U"Ł"},
    {"d", U"đð"},
    {"D", U"ĐÐ"},
    {"th", U"þ"},
    {"Th", U"Þ"},
    {"i", U"ı"},
};

std::optional<std::string> KnownForm(char32_t sign) {
  for (const auto& [plain, signs] : kPlainForms) {
    if (signs.find(sign) != std::u32string_view::npos) return std::string(plain);
  }
  return std::nullopt;
}

// "é" is an "e" and an accent to Unicode, "½" a "1", a stroke and a "2", and a full-width "Ａ" an "A".
std::string Decomposed(char32_t sign) {
  constexpr auto kHow =
      static_cast<utf8proc_option_t>(UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE | UTF8PROC_STRIPMARK);
  std::array<utf8proc_int32_t, 32> parts{};
  const auto count =
      utf8proc_decompose_char(static_cast<utf8proc_int32_t>(sign), parts.data(), parts.size(), kHow, nullptr);
  std::string plain;
  for (utf8proc_ssize_t i = 0; i < count && i < static_cast<utf8proc_ssize_t>(parts.size()); ++i) {
    const auto part = static_cast<char32_t>(parts[static_cast<std::size_t>(i)]);
    if (const auto form = KnownForm(part)) {
      plain += *form;
    } else {
      base::AppendUtf8(plain, part);
    }
  }
  return plain;
}

bool IsLetter(char32_t sign) { return (sign >= U'a' && sign <= U'z') || (sign >= U'A' && sign <= U'Z'); }

// @param before the plain text so far
// @param afterWord the sign before has become a word
std::string PlainForm(char32_t sign, const std::string& before, bool afterWord) {
  if (sign == U' ' && before.ends_with(" - ")) return "";  // a long dash has brought its blank
  if (afterWord && IsLetter(sign)) return {' ', static_cast<char>(sign)};
  if (sign >= U' ' && sign < 127) return {static_cast<char>(sign)};
  const auto form = KnownForm(sign);
  std::string plain = form ? *form : Decomposed(sign);
  const char last = before.empty() ? ' ' : before.back();
  if (last == ' ' && plain.starts_with(' ')) plain.erase(0, 1);
  // "1½" is one and a half, not eleven halves.
  const bool isFraction = plain.size() > 1 && plain.find('/') != std::string::npos;
  return isFraction && last >= '0' && last <= '9' ? ' ' + plain : plain;
}

template <class Each>
void ForEachSign(std::string_view text, const Each& each) {
  for (std::size_t at = 0; at < text.size();) {
    const base::Utf8Character sign = base::NextUtf8(text, at);
    each(sign.codePoint, text.substr(at, sign.length));
    at += sign.length;
  }
}

std::string Tidy(std::string_view text, std::string_view lineEnd) {
  std::string tidy;
  ForEachSign(base::Replace(text, "\r\n", "\n"), [&](char32_t sign, std::string_view bytes) {
    if (IsLineEnd(sign)) {
      tidy += lineEnd;
    } else if (IsBlank(sign)) {
      tidy += ' ';
    } else if (!IsInvisible(sign)) {
      tidy += bytes;
    }
  });
  return base::Replace(tidy, "  ", " ");
}

bool HasThreeWords(std::u16string_view text) { return std::ranges::count(text, u' ') >= 2; }

// "Prof.", "Lt." or the "S." of "U.S.": a short word with a capital.
bool EndsWithTitle(std::u16string_view text) {
  constexpr std::size_t kLongestTitle = 4;
  if (!text.ends_with(u'.')) return false;
  const std::size_t blank = text.find_last_of(u" .", text.size() - 2);
  const auto word = text.substr(blank == std::u16string_view::npos ? 0 : blank + 1);
  return word.size() <= kLongestTitle + 1 && word.front() >= u'A' && word.front() <= u'Z';
}

// A blank and a capital, perhaps in quotation marks.
bool BeginsSentence(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u" \"'()");
  return first != std::u16string_view::npos &&
         text.substr(0, first).find(u' ') != std::u16string_view::npos && text[first] >= u'A' &&
         text[first] <= u'Z';
}

bool IsChinese(char32_t sign) {
  return (sign >= 0x3400 && sign <= 0x9FFF) || (sign >= 0xF900 && sign <= 0xFAFF) ||
         (sign >= 0x20000 && sign <= 0x3FFFF);
}

bool IsLatinLetter(char32_t sign) {
  return (sign >= U'a' && sign <= U'z') || (sign >= U'A' && sign <= U'Z') || (sign >= 0xC0 && sign <= 0x24F);
}

}  // namespace

std::string TidyTyped(std::string_view text) { return Tidy(text, "\r\n"); }

TypedSentence::TypedSentence(std::string_view text) {
  std::string plain;
  ForEachSign(Tidy(base::Trim(text, "\r\n"), " "), [&](char32_t sign, std::string_view bytes) {
    const bool afterWord =
        !signs_.empty() && signs_.back().plain.size() > 4 && IsLetter(signs_.back().plain.back());
    signs_.push_back({std::string(bytes), PlainForm(sign, plain, afterWord)});
    plain += signs_.back().plain;
  });
}

std::string TypedSentence::Written() const {
  std::string text;
  for (const Sign& sign : signs_) text += sign.written;
  return text;
}

std::string TypedSentence::Plain() const {
  std::string text;
  for (const Sign& sign : signs_) text += sign.plain;
  return text;
}

std::string TypedSentence::Refused() const {
  constexpr std::size_t kMostRefused = 90;  // bytes, about ten signs: a message holds no more
  std::string refused;
  for (const Sign& sign : signs_) {
    const std::string quoted = "「" + sign.written + "」";
    if (IsPlainAscii(sign.plain) || refused.find(quoted) != std::string::npos) continue;
    if (refused.size() > kMostRefused) return refused + "…";
    refused += quoted;
  }
  return refused;
}

std::string TypedSentence::WithMarksOf(std::string_view marked) const {
  std::string text;
  std::size_t at = 0;
  for (const Sign& sign : signs_) {
    // Replies have no blanks around the sentence.
    const bool isAtEnd = at == marked.size();
    if (sign.plain == " " && (isAtEnd || (at == 0 && marked[at] != ' '))) {
      text += sign.written;
      continue;
    }
    for (const char expected : sign.plain) {
      while (at < marked.size() && marked[at] == '*' && expected != '*') text += marked[at++];
      if (at == marked.size() || marked[at++] != expected) return std::string(marked);
    }
    text += sign.written;
  }
  const std::string_view rest = marked.substr(at);
  return rest.find_first_not_of('*') == std::string_view::npos ? text.append(rest) : std::string(marked);
}

bool HoldsSeveralSentences(std::string_view text) {
  const std::u16string plain = base::ToUtf16(TypedSentence(text).Plain());
  int end = 0;
  while ((end = protocol::FindSentenceEnd(plain, end + 1, protocol::LineEnds::kAreNothing)) != 0) {
    const auto before = std::u16string_view(plain).substr(0, static_cast<std::size_t>(end));
    const auto after = std::u16string_view(plain).substr(static_cast<std::size_t>(end));
    const bool isEnd = !EndsWithTitle(before) && BeginsSentence(after);
    if (isEnd && HasThreeWords(before) && HasThreeWords(after.substr(after.find_first_not_of(u' '))))
      return true;
  }
  return false;
}

bool HoldsChinese(std::string_view text) { return FirstChinese(text).length > 0; }

TextRange FirstChinese(std::string_view text) {
  constexpr auto kNone = std::string_view::npos;
  std::size_t begin = kNone;
  std::size_t end = 0;
  bool isOver = false;
  bool hasLetters = false;
  ForEachSign(text, [&](char32_t sign, std::string_view bytes) {
    const auto at = static_cast<std::size_t>(bytes.data() - text.data());
    if (IsLatinLetter(sign)) {
      hasLetters = true;
      isOver = begin != kNone;
    }
    if (!IsChinese(sign) || isOver) return;
    begin = std::min(begin, at);
    end = at + bytes.size();
  });
  if (begin == kNone) return {};
  while (begin > 0 && text[begin - 1] >= '0' && text[begin - 1] <= '9') --begin;
  return hasLetters ? TextRange{begin, end - begin} : TextRange{0, text.size()};
}

}  // namespace marovane
