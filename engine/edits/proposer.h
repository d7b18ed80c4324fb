// What the parts of ProposeEdits share.
#pragma once

#include <array>
#include <string_view>

#include "engine/edits/edit.h"

namespace tolvex {

inline constexpr std::array<std::string_view, 12> kEditedPrepositions = {
    "in", "on", "at", "of", "to", "for", "with", "by", "from", "about", "into", "as"};

class Proposer {
 public:
  explicit Proposer(const Sentence& sentence) : sentence_(sentence) {}
  std::vector<Edit> Run();

 private:
  void Replace(EditKind kind, int i, std::string word);
  void Insert(EditKind kind, int i, std::string_view word);
  void Delete(EditKind kind, int i);

  void ProposeVerbForms(int i);
  void ProposeBe(int i);
  void ProposeTo(int i);
  void ProposeGerund(int i);
  void ProposeNumber(int i);
  void ProposeArticle(int i);
  void ProposePreposition(int i);
  void ProposePronoun(int i);
  bool OpensQuestion(int i) const;
  bool HasVerbJoined(int i) const;
  bool IsInfinitive(int i) const;
  bool IsMeans(int i) const;
  void ProposeOtherWord(int i);

  bool StartsNounPhrase(int i) const;

  const Sentence& sentence_;
  std::vector<Edit> edits_;
};

}  // namespace tolvex
