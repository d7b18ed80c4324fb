#include "engine/sentence/sentence.h"

#include <algorithm>

namespace tolvex {
namespace {

const Token kOutside{};

bool OpensClause(const std::string& word) {
  static constexpr std::array<std::string_view, 30> kOpeners = {
      ",",      ";",     ":",    "(",       "\"",    "because", "if",  "when",  "but",   "although",
      "though", "while", "that", "so",      "since", "unless",  "and", "or",    "think", "believe",
      "say",    "says",  "know", "whether", "hope",  "until",   "as",  "where", "said",  "thinks"};
  return std::find(kOpeners.begin(), kOpeners.end(), word) != kOpeners.end();
}

}  // namespace

Sentence::Sentence(std::vector<Token> tokens, const Lexicon& lexicon) : lexicon_(&lexicon) {
  for (Token& token : tokens) token.word = lexicon.Find(token.lower);
  tokens_ = std::make_shared<const std::vector<Token>>(std::move(tokens));
}

const Token& Sentence::At(int i) const {
  return i < 0 || i >= Size() ? kOutside : (*tokens_)[static_cast<std::size_t>(i)];
}

bool Sentence::Is(int i, std::initializer_list<std::string_view> words) const {
  return std::find(words.begin(), words.end(), Lower(i)) != words.end();
}

bool Sentence::Has(int i, int forms) const {
  return At(i).word != nullptr && (At(i).word->forms & forms) != 0;
}

bool Sentence::CanBe(int i, int parts) const {
  return At(i).word != nullptr && (At(i).word->parts & parts) != 0;
}

bool Sentence::Mostly(int i, Part part) const { return At(i).word != nullptr && IsMostly(*At(i).word, part); }

bool Sentence::IsSingular(int i) const { return Has(i, kSingular) && Lacks(i, kPlural); }

bool Sentence::IsPlural(int i) const { return Has(i, kPlural) && Lacks(i, kSingular); }

bool Sentence::IsName(int i) const { return i > 0 && At(i).IsCapitalised() && Lower(i) != "i"; }

bool Sentence::IsSign(int i) const {
  const bool joined = At(i).text.size() > 1 && At(i).text[0] == '\'';  // "'re"
  return !joined && !At(i).IsWord() && !IsDigit(At(i).text.empty() ? ' ' : At(i).text[0]);
}

bool Sentence::StartsClause(int i) const { return i == 0 || OpensClause(Lower(i - 1)); }

bool Sentence::AnyOf(int from, int to, std::initializer_list<std::string_view> words) const {
  for (int i = from; i < std::min(to, Size()); ++i) {
    if (Is(i, words)) return true;
  }
  return false;
}

std::string_view Sentence::Lemma(int i) const { return lexicon_->VerbLemma(Lower(i)); }

std::string Sentence::Inflected(int i, Form form) const { return lexicon_->Inflect(Lemma(i), form); }

}  // namespace tolvex
