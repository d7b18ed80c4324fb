#include "engine/text/tag.h"

#include <algorithm>
#include <array>

namespace tolvex {
namespace {

constexpr std::array<std::string_view, kTagCount> kNames = {
    "CC",  "CD",   "DT",  "EX",  "FW",  "IN",   "JJ",  "JJR", "JJS",   "LS",    "MD",   "NN",  "NNS",
    "NNP", "NNPS", "PDT", "POS", "PRP", "PRP$", "RB",  "RBR", "RBS",   "RP",    "SYM",  "TO",  "UH",
    "VB",  "VBD",  "VBG", "VBN", "VBP", "VBZ",  "WDT", "WP",  "WP$",   "WRB",   "HYPH", "ADD", "AFX",
    "GW",  "NFP",  "XX",  ".",   ",",   ":",    "``",  "''",  "-LRB-", "-RRB-", "$",    "#"};

}  // namespace

std::string_view TagName(Tag tag) { return kNames[static_cast<std::size_t>(tag)]; }

Tag TagFromName(std::string_view name) {
  const auto found = std::find(kNames.begin(), kNames.end(), name);
  return found == kNames.end() ? Tag::XX : static_cast<Tag>(found - kNames.begin());
}

}  // namespace tolvex
