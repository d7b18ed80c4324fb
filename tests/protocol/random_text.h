// Texts of the signs that formats trip over.
#pragma once

#include <array>
#include <random>
#include <string>
#include <string_view>

namespace protocol::test {

class RandomText {
 public:
  /// The same seed gives the same texts.
  explicit RandomText(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t limit) { return random_() % limit; }

  /// UTF-8 without apostrophes, as records are stored, and without blanks around it, as they are sent.
  std::string Stored() {
    std::string text;
    for (std::size_t left = Below(12); left > 0; --left) text += kSigns[Below(kSigns.size())];
    return text.empty() ? text : "[" + text + "]";
  }
  /// The number of an essay or sentence.
  std::string Number() { return Below(4) == 0 ? "" : std::to_string(random_()); }
  /// One of these letters.
  std::string Flag(std::string_view known) { return std::string(1, known[Below(known.size())]); }
  /// As Stored, with apostrophes.
  std::string Any() { return Stored() + (Below(2) == 0 ? "'3C'" : "'") + Stored(); }

 private:
  static constexpr std::array kSigns{"a",  "Z",    "7",      " ",       "%",    "%41", "&",
                                     "=",  "+",    "#",      "<",       ">",    "@",   "<@",
                                     "@>", "|",    "FINISH", "LASTID:", "\r\n", "\n",  "\t",
                                     "\"", "\x01", ",",      ":",       "$",    "*",   "?",
                                     "’",  "中",   "許",     "‧",       "·",    "é",   "\xEE\xA0\x80",
                                     "😀"};
  std::mt19937 random_;
};

}  // namespace protocol::test
