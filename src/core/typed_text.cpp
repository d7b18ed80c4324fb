#include "core/typed_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <map>

#include "base/text.h"
#include "base/utf8.h"
#include "core/text_utility.h"

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

// Signs whose plain form Unicode does not know.
const std::map<char32_t, std::string>& PlainForms() {
  static const std::map<char32_t, std::string> kForms{{U'‘', "'"},
                                                      {U'’', "'"},
                                                      {U'‚', "'"},
                                                      {U'‛', "'"},
                                                      {U'′', "'"},
                                                      {U'´', "'"},
                                                      {U'ʼ', "'"},
                                                      {U'“', "\""},
                                                      {U'”', "\""},
                                                      {U'„', "\""},
                                                      {U'‟', "\""},
                                                      {U'″', "\""},
                                                      {U'«', "\""},
                                                      {U'»', "\""},
                                                      {U'「', "\""},
                                                      {U'」', "\""},
                                                      {U'『', "\""},
                                                      {U'』', "\""},
                                                      {U'。', "."},
                                                      {U'、', ","},
                                                      {U'‐', "-"},
                                                      {U'‑', "-"},
                                                      {U'‒', "-"},
                                                      {U'–', "-"},
                                                      {U'−', "-"},
                                                      {U'—', " - "},
                                                      {U'―', " - "},
                                                      {U'⁄', "/"},
                                                      {U'°', " degrees"},
                                                      {U'℃', " degrees Celsius"},
                                                      {U'℉', " degrees Fahrenheit"},
                                                      {U'€', "$"},
                                                      {U'£', "$"},
                                                      {U'¥', "$"},
                                                      {U'¢', " cents"},
                                                      {U'×', "x"},
                                                      {U'÷', "/"},
                                                      {U'·', "-"},
                                                      {U'•', ""},
                                                      {U'™', ""},
                                                      {U'®', ""},
                                                      {U'©', ""},
                                                      {U'ß', "ss"},
                                                      {U'æ', "ae"},
                                                      {U'Æ', "Ae"},
                                                      {U'œ', "oe"},
                                                      {U'Œ', "Oe"},
                                                      {U'ø', "o"},
                                                      {U'Ø', "O"},
                                                      {U'ł', "l"},
                                                      {U'Ł', "L"},
                                                      {U'đ', "d"},
                                                      {U'Đ', "D"},
                                                      {U'ð', "d"},
                                                      {U'Ð', "D"},
                                                      {U'þ', "th"},
                                                      {U'Þ', "Th"},
                                                      {U'ı', "i"}};
  return kForms;
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
    const auto form = PlainForms().find(part);
    if (form != PlainForms().end()) {
      plain += form->second;
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
  const auto form = PlainForms().find(sign);
  std::string plain = form != PlainForms().end() ? form->second : Decomposed(sign);
  const char last = before.empty() ? ' ' : before.back();
  if (last == ' ' && plain.starts_with(' ')) plain.erase(0, 1);
  // "1½" is one and a half, not eleven halves.
  const bool isFraction = plain.size() > 1 && plain.find('/') != std::string::npos;
  if (isFraction && last >= '0' && last <= '9') plain.insert(0, " ");
  return plain;
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

constexpr std::ptrdiff_t kLeastWords = 3;

std::ptrdiff_t CountWords(std::string_view text) { return std::ranges::count(text, ' ') + 1; }

// A title, or an initial such as the last one of "U.S.".
bool IsAbbreviation(std::string_view word) {
  constexpr std::array<std::string_view, 17> kTitles{"Mr", "Mrs", "Ms",   "Dr",  "Prof", "St",
                                                     "Mt", "Gen", "Capt", "Sgt", "Rev",  "Jr",
                                                     "Sr", "vs",  "No",   "Fig", "Inc"};
  const bool isInitial = word.size() == 1 || (word.size() > 1 && word[word.size() - 2] == '.');
  return isInitial || std::ranges::find(kTitles, word) != kTitles.end();
}

bool EndsSentence(std::string_view word) {
  while (word.ends_with('"') || word.ends_with('\'') || word.ends_with(')')) word.remove_suffix(1);
  if (word.ends_with('?') || word.ends_with('!')) return true;
  return word.ends_with('.') && !IsAbbreviation(word.substr(0, word.size() - 1));
}

bool BeginsSentence(std::string_view word) {
  while (word.starts_with('"') || word.starts_with('\'') || word.starts_with('(')) word.remove_prefix(1);
  return !word.empty() && word.front() >= 'A' && word.front() <= 'Z';
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

std::vector<std::string> SentencesTyped(std::string_view text) {
  std::vector<std::string> sentences(1);
  std::string before;
  for (const std::string& word : base::Split(Tidy(base::Trim(text, " \r\n"), " "), " ")) {
    if (word.empty()) continue;
    const std::string plain = TypedSentence(word).Plain();
    if (EndsSentence(before) && BeginsSentence(plain) && CountWords(sentences.back()) >= kLeastWords) {
      sentences.emplace_back();
    }
    if (!sentences.back().empty()) sentences.back() += ' ';
    sentences.back() += word;
    before = plain;
  }
  if (sentences.size() > 1 && CountWords(sentences.back()) < kLeastWords) {
    const std::string rest = std::move(sentences.back());
    sentences.pop_back();
    sentences.back() += ' ' + rest;
  }
  return sentences;
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
