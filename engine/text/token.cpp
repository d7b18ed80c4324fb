#include "engine/text/token.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace tolvex {
namespace {

struct PlainText {
  std::string text;
  std::vector<std::size_t> origin;  // of each byte of it, and of its end: the place in the text as given
};

PlainText StraightenQuotes(std::string_view given) {
  using Quote = std::pair<std::string_view, char>;
  static constexpr std::array<Quote, 4> kQuotes = {
      {{"\xE2\x80\x98", '\''}, {"\xE2\x80\x99", '\''}, {"\xE2\x80\x9C", '"'}, {"\xE2\x80\x9D", '"'}}};
  PlainText plain;
  for (std::size_t i = 0; i < given.size();) {
    const auto quote = std::ranges::find(kQuotes, given.substr(i, 3), &Quote::first);
    plain.origin.push_back(i);
    plain.text += quote == kQuotes.end() ? given[i] : quote->second;
    i += quote == kQuotes.end() ? 1 : 3;
  }
  plain.origin.push_back(given.size());
  return plain;
}

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsWordSign(char c) { return IsLetter(c) || IsDigit(c); }

class Cutter {
 public:
  explicit Cutter(std::string_view given) : plain_(StraightenQuotes(given)) {}

  std::vector<Token> Run() {
    const std::string& s = plain_.text;
    while (at_ < s.size()) {
      if (IsBlank(s[at_])) {
        ++at_;
      } else if (IsWordSign(s[at_])) {
        CutWord();
      } else {
        CutSign();
      }
    }
    return std::move(tokens_);
  }

 private:
  void Push(std::size_t begin, std::size_t end) {
    Token token;
    token.text = plain_.text.substr(begin, end - begin);
    token.lower = base::Lower(token.text);
    token.begin = plain_.origin[begin];
    token.end = plain_.origin[end];
    token.spaceBefore = begin > 0 && IsBlank(plain_.text[begin - 1]);
    tokens_.push_back(std::move(token));
  }

  // Inside a word: "o'clock", "well-known", "3,000.5".
  bool JoinsAt(std::size_t i) const {
    const std::string& s = plain_.text;
    if (i + 1 >= s.size() || !IsWordSign(s[i + 1])) return false;
    if (s[i] == '\'' || s[i] == '-' || s[i] == '/') return true;
    return (s[i] == '.' || s[i] == ',' || s[i] == ':') && IsDigit(s[i - 1]) && IsDigit(s[i + 1]);
  }

  void CutWord() {
    const std::size_t begin = at_;
    while (at_ < plain_.text.size() && (IsWordSign(plain_.text[at_]) || JoinsAt(at_))) ++at_;
    ExtendOverAbbreviation(begin);
    const std::size_t split = ContractionSplit(base::Lower(plain_.text.substr(begin, at_ - begin)));
    if (split != 0) Push(begin, begin + split);
    Push(begin + split, at_);
  }

  // "U.S.", "e.g.", "Mr.": the full stop belongs to the word.
  void ExtendOverAbbreviation(std::size_t begin) {
    const std::string& s = plain_.text;
    const auto letterDot = [&](std::size_t i) {
      return i + 1 < s.size() && IsLetter(s[i]) && s[i + 1] == '.';
    };
    if (at_ == begin + 1 && letterDot(begin) && letterDot(begin + 2)) {
      while (letterDot(at_ - 1) || letterDot(at_)) at_ += letterDot(at_ - 1) ? 1 : 2;
      return;
    }
    static constexpr std::array<std::string_view, 12> kTitles = {"mr", "mrs", "ms", "dr", "prof", "st",
                                                                 "mt", "jr",  "sr", "vs", "etc",  "no"};
    const std::string word = base::Lower(s.substr(begin, at_ - begin));
    const bool titled = std::find(kTitles.begin(), kTitles.end(), word) != kTitles.end();
    const bool continues = at_ + 2 < s.size() && s[at_] == '.' && IsBlank(s[at_ + 1]);
    if (titled && continues && (word != "no" || IsDigit(s[at_ + 2]))) ++at_;
  }

  static std::size_t ContractionSplit(const std::string& word) {
    if (word == "cannot") return 3;
    static constexpr std::array<std::string_view, 7> kEndings = {"n't", "'re", "'ve", "'ll",
                                                                 "'s",  "'m",  "'d"};
    for (const std::string_view ending : kEndings) {
      if (word.size() > ending.size() && word.ends_with(ending)) return word.size() - ending.size();
    }
    return 0;
  }

  void CutSign() {
    const std::string& s = plain_.text;
    const std::size_t begin = at_++;
    if (s[begin] == '.' || s[begin] == '-') {
      while (at_ < s.size() && s[at_] == s[begin]) ++at_;
    } else if (s[begin] == '\'' && at_ < s.size() && s[at_] == 's' && begin > 0 && IsWordSign(s[begin - 1])) {
      ++at_;
    }
    Push(begin, at_);
  }

  PlainText plain_;
  std::size_t at_ = 0;
  std::vector<Token> tokens_;
};

}  // namespace

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return IsUpper(c) || IsLower(c) || (static_cast<unsigned char>(c) & 0x80U) != 0; }

std::string Capitalised(std::string_view text) {
  std::string result(text);
  if (!result.empty() && IsLower(result[0])) result[0] = static_cast<char>(result[0] - 'a' + 'A');
  return result;
}

bool Token::IsWord() const { return !text.empty() && IsLetter(text[0]); }
bool Token::IsCapitalised() const { return !text.empty() && IsUpper(text[0]); }

std::vector<Token> Tokenize(std::string_view sentence) { return Cutter(sentence).Run(); }

}  // namespace tolvex
