// A tagged sentence with the questions that rules ask about it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/text/token.h"

namespace tolvex {

/// Indices may lie outside the sentence: there the word is "" and the tag XX. Copies share the tokens.
class Sentence {
 public:
  /// Takes tagged tokens and looks each up in the lexicon, which must outlive the sentence.
  Sentence(std::vector<Token> tokens, const Lexicon& lexicon);

  int Size() const { return static_cast<int>(tokens_->size()); }
  const Token& At(int i) const;
  const std::string& Lower(int i) const { return At(i).lower; }
  Tag TagAt(int i) const { return At(i).tag; }
  const std::vector<Token>& Tokens() const { return *tokens_; }
  const Lexicon& Words() const { return *lexicon_; }

  bool Is(int i, std::initializer_list<std::string_view> words) const;
  bool Has(int i, int forms) const;  ///< can be one of these forms
  bool Lacks(int i, int forms) const { return !Has(i, forms); }
  bool CanBe(int i, int parts) const;  ///< WordNet knows it as one of these parts
  bool Mostly(int i, Part part) const;
  bool IsSingular(int i) const;    ///< a noun form that is singular only
  bool IsPlural(int i) const;      ///< a noun form that is plural only
  bool IsName(int i) const;        ///< capitalised inside the sentence
  bool IsSign(int i) const;        ///< punctuation, or outside the sentence
  bool StartsClause(int i) const;  ///< after a comma, a conjunction or an opener
  bool AnyOf(int from, int to, std::initializer_list<std::string_view> words) const;  ///< in [from, to)
  std::string_view Lemma(int i) const;            ///< dictionary form as a verb, or ""
  std::string Inflected(int i, Form form) const;  ///< the verb at i in another form, or ""

 private:
  std::shared_ptr<const std::vector<Token>> tokens_;
  const Lexicon* lexicon_;
};

}  // namespace tolvex
