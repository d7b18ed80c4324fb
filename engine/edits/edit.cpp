#include "engine/edits/edit.h"

#include "base/text.h"
#include "engine/edits/proposer.h"

namespace tolvex {
namespace {

Token NewToken(const std::string& word, bool capitalised) {
  Token token;
  token.lower = base::Lower(word);
  token.text = capitalised ? Capitalised(word) : word;
  token.spaceBefore = true;
  return token;
}

}  // namespace

std::vector<Edit> ProposeEdits(const Sentence& sentence) { return Proposer(sentence).Run(); }

std::vector<Token> Apply(const std::vector<Token>& tokens, const Edit& edit) {
  const auto at = [&](int i) { return tokens.begin() + i; };
  std::vector<Token> edited(tokens.begin(), at(edit.first));
  const bool atStart = edit.first == 0;
  for (const std::string& word : edit.words) {
    const bool first = edited.empty();
    edited.push_back(NewToken(word, first && !tokens.empty() && tokens[0].IsCapitalised()));
    edited.back().spaceBefore = !first;
  }
  edited.insert(edited.end(), at(edit.last + 1), tokens.end());
  if (atStart && edit.words.empty() && !edited.empty() && tokens[0].IsCapitalised())
    edited[0].text = Capitalised(edited[0].text);
  return edited;
}

std::vector<Edit> Proposer::Run() {
  for (int i = 0; i < sentence_.Size(); ++i) {
    const Token& token = sentence_.At(i);
    if (!token.IsWord() || sentence_.IsName(i)) continue;
    ProposeVerbForms(i);
    ProposeBe(i);
    ProposeTo(i);
    ProposeGerund(i);
    ProposeNumber(i);
    ProposeArticle(i);
    ProposePreposition(i);
    ProposePronoun(i);
    ProposeOtherWord(i);
  }
  return std::move(edits_);
}

void Proposer::Replace(EditKind kind, int i, std::string word) {
  if (!word.empty() && word != sentence_.Lower(i)) edits_.push_back({kind, i, i, {std::move(word)}});
}

void Proposer::Insert(EditKind kind, int i, std::string_view word) {
  edits_.push_back({kind, i, i - 1, {std::string(word)}});
}

void Proposer::Delete(EditKind kind, int i) {
  if (sentence_.Size() > 2) edits_.push_back({kind, i, i, {}});
}

}  // namespace tolvex
