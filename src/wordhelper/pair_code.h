// What a word may be asked for, as the word bank's codes.
#pragma once

#include <array>
#include <string_view>

namespace marovane {

/// A part of speech and that of its partner, by the numbers of the options `optPara1` and `optPara2`.
struct PairCode {
  std::string_view code;
  int word;
  int partner;
};

inline constexpr std::array<PairCode, 5> kPairCodes{
    {{"CNV", 0, 0}, {"CNJ", 0, 2}, {"CNP", 0, 3}, {"CVM", 1, 1}, {"CJM", 2, 1}}};

/// Near-synonyms, by the numbers of the options `optPara3`: of a noun, a verb, an adjective.
inline constexpr std::array<std::string_view, 3> kSynonymCodes{"SN", "SV", "SJ"};

}  // namespace marovane
