#include "protocol/sentences.h"

#include <algorithm>
#include <initializer_list>

#include "base/text.h"
#include "base/utf16.h"

namespace protocol {
namespace {

std::u16string Lower(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& letter : lower) {
    if (letter >= u'A' && letter <= u'Z') letter += u'a' - u'A';
  }
  return lower;
}

// Part of a text by a place from 1; "" when it would begin before the text.
std::u16string_view Part(std::u16string_view text, int place, std::size_t length) {
  return place > 0 ? text.substr(static_cast<std::size_t>(place - 1), length) : std::u16string_view{};
}

bool IsOneOf(std::u16string_view text, std::initializer_list<std::u16string_view> words) {
  return std::ranges::find(words, text) != words.end();
}

// The point at a place belongs to an abbreviation. The last test finds the inner point of "p.m.".
bool IsAbbreviation(std::u16string_view text, int place) {
  const auto four = Part(text, place - 3, 4);
  const auto three = Part(text, place - 2, 3);
  const auto around = Part(text, place - 1, 4);
  return four == u"Mrs." || IsOneOf(Lower(four), {u"p.m.", u"a.m."}) || IsOneOf(three, {u"Mr.", u"Dr."}) ||
         IsOneOf(Lower(three), {u"pm.", u"am."}) || IsOneOf(Lower(around), {u"p.m.", u"a.m."});
}

bool EndsSentence(std::u16string_view text, int place, LineEnds lineEnds) {
  const char16_t sign = text[static_cast<std::size_t>(place - 1)];
  // At the end of the text even an abbreviation ends the sentence: it would never be judged otherwise.
  const bool isLast = static_cast<std::size_t>(place) == text.size();
  if (sign == u'.') return isLast || !IsAbbreviation(text, place);
  return IsEndMark(sign) || (sign == u'\r' && lineEnds == LineEnds::kEndSentences);
}

}  // namespace

bool IsEndMark(char16_t sign) {
  return std::u16string_view(u".?!．。？！").find(sign) != std::u16string_view::npos;
}

int FindSentenceEnd(std::u16string_view text, int from, LineEnds lineEnds) {
  for (int place = std::max(from, 1); static_cast<std::size_t>(place) <= text.size(); ++place) {
    if (EndsSentence(text, place, lineEnds)) return place;
  }
  return 0;
}

std::string TidySentence(std::string_view sentence) {
  return base::Trim(base::Replace(base::Replace(base::Trim(sentence), "\r", ""), "\n", ""));
}

std::vector<std::string> CutSentences(std::string_view text) {
  const std::u16string units = base::ToUtf16(base::Trim(text));
  std::vector<std::string> sentences;
  int begin = 1;
  while (const int end = FindSentenceEnd(units, begin, LineEnds::kAreNothing)) {
    sentences.push_back(TidySentence(base::ToUtf8(std::u16string_view(units).substr(
        static_cast<std::size_t>(begin - 1), static_cast<std::size_t>(end - begin + 1)))));
    begin = end + 1;
  }
  return sentences;
}

std::string RunningText(std::string_view text) { return base::Trim(base::Replace(text, "\r\n", "")); }

}  // namespace protocol
