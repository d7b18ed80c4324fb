#include "engine/wordbank/sentence_maker.h"

#include <algorithm>
#include <initializer_list>

#include "engine/text/token.h"

namespace wexbin {
namespace {

bool IsOneOf(const std::string& text, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), text) != words.end();
}

bool IsVerb(const Piece& piece) { return piece.english.starts_with("to "); }
bool IsSign(const Piece& piece) { return piece.english.find_first_not_of(".,?!;:()\"") == std::string::npos; }

// Adds -s to the first word: "go to" is "goes to".
std::string ThirdPerson(const std::string& verb) {
  const auto end = std::min(verb.find(' '), verb.size());
  std::string word = verb.substr(0, end);
  const auto endsWithAny = [&](std::initializer_list<std::string_view> ends) {
    return std::any_of(ends.begin(), ends.end(), [&](std::string_view e) { return word.ends_with(e); });
  };
  if (word == "have") {
    word = "has";
  } else if (word.ends_with('y') && !endsWithAny({"ay", "ey", "oy", "uy"})) {
    word.replace(word.size() - 1, 1, "ies");
  } else {
    word += endsWithAny({"s", "x", "z", "ch", "sh", "o"}) ? "es" : "s";
  }
  return word + verb.substr(end);
}

std::string BeOf(const std::string& subject) {
  if (subject == "I") return "am";
  return IsOneOf(subject, {"you", "we", "they", "these", "those"}) ? "are" : "is";
}

class Grammar {
 public:
  explicit Grammar(std::vector<Piece>& pieces) : pieces_(pieces) {}

  void Run() {
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      SettleNot(i);
      SettleDegree(i);
      if (IsVerb(pieces_[i])) SettleVerb(i);
    }
  }

 private:
  bool VerbFollows(std::size_t i) const { return i + 1 < pieces_.size() && IsVerb(pieces_[i + 1]); }

  std::string Before(std::size_t i) const { return i == 0 ? std::string() : pieces_[i - 1].english; }

  void SettleNot(std::size_t i) {
    std::string& english = pieces_[i].english;
    if (english == "not" && VerbFollows(i)) english = Before(i) == "he" ? "does not" : "do not";
    if (english == "do not have" && VerbFollows(i)) english = "did not";
    if (english == "did not" && !VerbFollows(i)) english = "do not have";
  }

  // "The weather very good" wants its verb; "very good weather" does not.
  void SettleDegree(std::size_t i) {
    if (!IsOneOf(pieces_[i].english, {"very", "too", "really", "not"}) || i == 0 || VerbFollows(i)) return;
    const bool attribute =
        i + 2 < pieces_.size() && IsOneOf(std::string(pieces_[i + 2].chinese), {"的", "地"});
    const Piece& subject = pieces_[i - 1];
    const bool bare =
        subject.english.empty() || IsSign(subject) || beforeWasVerb_ ||
        IsOneOf(subject.english, {"is", "a", "and", "but", "or", "I am", "you are", "also", "all"});
    if (!attribute && !bare) pieces_[i].english = BeOf(subject.english) + ' ' + pieces_[i].english;
    beforeWasVerb_ = false;
  }

  void SettleVerb(std::size_t i) {
    const std::string before = Before(i);
    std::string& english = pieces_[i].english;
    const bool last = i + 1 == pieces_.size() || IsSign(pieces_[i + 1]);
    const bool openEnd =
        english.ends_with(" to") && (VerbFollows(i) || last);  // "to go to" where no place follows
    if (openEnd) english.resize(english.size() - 3);
    if (beforeWasVerb_) return;  // "like to eat"
    english.erase(0, 3);
    if (IsOneOf(before, {"he", "she", "it"})) english = ThirdPerson(english);
    beforeWasVerb_ = VerbFollows(i);
  }

  std::vector<Piece>& pieces_;
  bool beforeWasVerb_ = false;
};

bool EndsSentence(char c) { return c == '.' || c == '?' || c == '!'; }

// A mark stands directly behind a word; quotes open and close in turn.
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

std::string MakeSentence(std::vector<Piece> pieces) {
  Grammar(pieces).Run();
  Line line;
  for (const Piece& piece : pieces) line.Add(piece);
  return line.Text();
}

}  // namespace wexbin
