// Puts the English of single Chinese words together to a sentence.
#include <algorithm>

#include "engine/text/token.h"
#include "engine/wordbank/clause.h"

namespace wexbin {
namespace {

bool IsSign(const Piece& piece) { return piece.english.find_first_not_of(".,?!;:()\"") == std::string::npos; }

bool EndsSentence(char c) { return c == '.' || c == '?' || c == '!'; }

// A mark comes directly after a word; quotes open and close in turn.
class Line {
 public:
  void Add(const Piece& piece) {
    if (piece.english.empty()) return;
    const bool isQuote = piece.english == "\"";
    if (isQuote) inQuotes_ = !inQuotes_;
    const bool closesUp = IsSign(piece) && piece.english != "(" && !(isQuote && inQuotes_);
    const bool vowel = std::string_view("aeiouAEIO").find(piece.english[0]) != std::string_view::npos;
    if (vowel && (text_ == "A" || text_.ends_with(" a"))) text_ += 'n';
    if (!text_.empty() && !closesUp && !opened_) text_ += ' ';
    text_ += startsSentence_ ? tolvex::Capitalised(piece.english) : piece.english;
    opened_ = piece.english == "(" || (isQuote && inQuotes_);
    startsSentence_ = EndsSentence(piece.english.back()) || (startsSentence_ && opened_);
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
  bool inQuotes_ = false;
  bool opened_ = false;
  bool startsSentence_ = true;
};

}  // namespace

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), text) != words.end();
}

std::string MakeSentence(const std::vector<Piece>& pieces, const EnglishForms& forms) {
  Line line;
  Clause clause;
  const auto addClause = [&] {
    Arrange(clause, forms);
    Inflect(clause, forms);
    for (const Piece& piece : clause) line.Add(piece);
    clause.clear();
  };
  for (const Piece& piece : pieces) {
    if (piece.english.empty() || !IsSign(piece)) {
      clause.push_back(piece);
      continue;
    }
    addClause();
    line.Add(piece);
  }
  addClause();
  return line.Text();
}

}  // namespace wexbin
