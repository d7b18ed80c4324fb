// Part-of-speech tags: the Penn Treebank set with the additions of the English Web Treebank.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvex {

enum class Tag : std::uint8_t {
  CC,
  CD,
  DT,
  EX,
  FW,
  IN,
  JJ,
  JJR,
  JJS,
  LS,
  MD,
  NN,
  NNS,
  NNP,
  NNPS,
  PDT,
  POS,
  PRP,
  PRPS,
  RB,
  RBR,
  RBS,
  RP,
  SYM,
  TO,
  UH,
  VB,
  VBD,
  VBG,
  VBN,
  VBP,
  VBZ,
  WDT,
  WP,
  WPS,
  WRB,
  HYPH,
  ADD,
  AFX,
  GW,
  NFP,
  XX,
  Period,
  Comma,
  Colon,
  OpenQuote,
  CloseQuote,
  OpenBracket,
  CloseBracket,
  Dollar,
  Hash,
  Count
};

inline constexpr int kTagCount = static_cast<int>(Tag::Count);

/// The name as the treebanks write it, "PRP$" for PRPS.
std::string_view TagName(Tag tag);

/// The tag of a name; XX for an unknown one.
Tag TagFromName(std::string_view name);

constexpr bool IsNoun(Tag t) { return t >= Tag::NN && t <= Tag::NNPS; }
constexpr bool IsVerb(Tag t) { return t >= Tag::VB && t <= Tag::VBZ; }
constexpr bool IsFiniteVerb(Tag t) { return t == Tag::VBD || t == Tag::VBP || t == Tag::VBZ || t == Tag::MD; }
constexpr bool IsDeterminer(Tag t) { return t == Tag::DT || t == Tag::PRPS; }
constexpr bool IsAdjective(Tag t) { return t >= Tag::JJ && t <= Tag::JJS; }
constexpr bool IsAdverb(Tag t) { return t >= Tag::RB && t <= Tag::RBS; }

}  // namespace tolvex
