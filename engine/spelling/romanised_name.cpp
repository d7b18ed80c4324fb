#include "engine/spelling/romanised_name.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "engine/text/token.h"

namespace tolvex {
namespace {

// Every syllable of Mandarin as its initial and its final, in Hanyu Pinyin with "v" for the rounded i.
struct Row {
  std::string_view initial;
  std::string_view finals;
};

constexpr std::array<Row, 24> kSyllables = {{
    {"", "a ai an ang ao e ei en eng er o ou"},
    {"b", "a ai an ang ao ei en eng i ian iao ie in ing o u"},
    {"p", "a ai an ang ao ei en eng i ian iao ie in ing o ou u"},
    {"m", "a ai an ang ao e ei en eng i ian iao ie in ing iu o ou u"},
    {"f", "a an ang ei en eng o ou u"},
    {"d", "a ai an ang ao e ei en eng i ian iao ie ing iu ong ou u uan ui un uo"},
    {"t", "a ai an ang ao e eng i ian iao ie ing ong ou u uan ui un uo"},
    {"n", "a ai an ang ao e ei en eng i ian iang iao ie in ing iu ong ou u uan uo v ve"},
    {"l", "a ai an ang ao e ei eng i ia ian iang iao ie in ing iu ong ou u uan un uo v ve"},
    {"g", "a ai an ang ao e ei en eng ong ou u ua uai uan uang ui un uo"},
    {"k", "a ai an ang ao e en eng ong ou u ua uai uan uang ui un uo"},
    {"h", "a ai an ang ao e ei en eng ong ou u ua uai uan uang ui un uo"},
    {"j", "i ia ian iang iao ie in ing iong iu v van ve vn"},
    {"q", "i ia ian iang iao ie in ing iong iu v van ve vn"},
    {"x", "i ia ian iang iao ie in ing iong iu v van ve vn"},
    {"zh", "a ai an ang ao e en eng i ong ou u ua uai uan uang ui un uo"},
    {"ch", "a ai an ang ao e en eng i ong ou u ua uai uan uang ui un uo"},
    {"sh", "a ai an ang ao e ei en eng i ou u ua uai uan uang ui un uo"},
    {"r", "an ang ao e en eng i ong ou u uan ui un uo"},
    {"z", "a ai an ang ao e ei en eng i ong ou u uan ui un uo"},
    {"c", "a ai an ang ao e en eng i ong ou u uan ui un uo"},
    {"s", "a ai an ang ao e en eng i ong ou u uan ui un uo"},
    {"y", "a an ang ao e i in ing ong ou v van ve vn"},
    {"w", "a ai an ang ei en eng o u"},
}};

struct Spelling {
  std::string_view from;
  std::string_view to;
};

std::string Respelled(std::string_view part, const auto& spellings) {
  const auto found = std::ranges::find(spellings, part, &Spelling::from);
  return std::string(found == spellings.end() ? part : found->to);
}

bool IsDental(std::string_view initial) { return initial == "z" || initial == "c" || initial == "s"; }
bool IsRetroflex(std::string_view initial) {
  return initial == "zh" || initial == "ch" || initial == "sh" || initial == "r";
}

std::string Hanyu(std::string_view initial, std::string_view final) {
  return std::string(initial) + base::Replace(final, "v", "u");
}

std::string Tongyong(std::string_view initial, std::string_view final) {
  static constexpr std::array<Spelling, 3> kInitials = {{{"zh", "jh"}, {"q", "c"}, {"x", "s"}}};
  static constexpr std::array<Spelling, 2> kFinals = {{{"iu", "iou"}, {"ui", "uei"}}};
  if (final == "i" && (IsDental(initial) || IsRetroflex(initial)))
    return Respelled(initial, kInitials) + "ih";
  if ((initial == "f" || initial == "w") && final == "eng") return std::string(initial) + "ong";
  if (initial == "w" && final == "en") return "wun";
  if (initial == "y") return Hanyu(initial, final);
  if (final == "iong") return Respelled(initial, kInitials) + "yong";
  return Respelled(initial, kInitials) + base::Replace(Respelled(final, kFinals), "v", "yu");
}

// Without its apostrophes.
std::string WadeGiles(std::string_view initial, std::string_view final) {
  static constexpr std::array<Spelling, 10> kInitials = {{{"b", "p"},
                                                          {"d", "t"},
                                                          {"g", "k"},
                                                          {"j", "ch"},
                                                          {"q", "ch"},
                                                          {"x", "hs"},
                                                          {"zh", "ch"},
                                                          {"z", "ts"},
                                                          {"c", "ts"},
                                                          {"r", "j"}}};
  static constexpr std::array<Spelling, 8> kFinals = {{{"ian", "ien"},
                                                       {"ie", "ieh"},
                                                       {"iong", "iung"},
                                                       {"ong", "ung"},
                                                       {"er", "erh"},
                                                       {"ve", "ueh"},
                                                       {"van", "uan"},
                                                       {"vn", "un"}}};
  static constexpr std::array<Spelling, 5> kAfterY = {
      {{"an", "en"}, {"e", "eh"}, {"ong", "ung"}, {"ou", "u"}, {"ve", "ueh"}}};
  const bool isVelar = initial == "g" || initial == "k" || initial == "h";
  if (final == "i" && initial == "s") return "szu";
  if (final == "i" && IsDental(initial)) return "tzu";
  if (final == "i" && IsRetroflex(initial)) return Respelled(initial, kInitials) + "ih";
  if (initial == "y") return "y" + base::Replace(Respelled(final, kAfterY), "v", "u");
  if (isVelar && initial != "h" && final == "ui") return Respelled(initial, kInitials) + "uei";
  if (isVelar && final == "e") return Respelled(initial, kInitials) + "o";
  if (final == "uo" && !isVelar && initial != "sh") return Respelled(initial, kInitials) + "o";
  return Respelled(initial, kInitials) + base::Replace(Respelled(final, kFinals), "v", "u");
}

using Syllables = std::unordered_set<std::string>;

std::array<Syllables, 3> MakeSystems() {
  std::array<Syllables, 3> systems;
  for (const Row& row : kSyllables) {
    for (const std::string& final : base::Split(row.finals, " ")) {
      systems[0].insert(Hanyu(row.initial, final));
      systems[1].insert(Tongyong(row.initial, final));
      systems[2].insert(WadeGiles(row.initial, final));
    }
  }
  systems[2].insert({"i", "ssu"});  // as often as "yi" and "szu"
  return systems;
}

constexpr std::size_t kLongestSyllable = 6;
constexpr int kMostSyllables = 3;

// Whether a part is one to three syllables of a system written together.
bool IsMadeOf(const Syllables& syllables, const std::string& part) {
  constexpr int kNever = kMostSyllables + 1;
  std::vector<int> least(part.size() + 1, kNever);  // syllables that the part's beginning takes
  least[0] = 0;
  for (std::size_t end = 1; end <= part.size(); ++end) {
    for (std::size_t size = 1; size <= std::min(end, kLongestSyllable); ++size) {
      const int before = least[end - size];
      if (before < kMostSyllables && syllables.contains(part.substr(end - size, size)))
        least[end] = std::min(least[end], before + 1);
    }
  }
  return least.back() <= kMostSyllables;
}

}  // namespace

bool IsRomanisedName(std::string_view word) {
  static const auto kSystems = MakeSystems();
  constexpr std::size_t kLongestName = 24;
  if (word.empty() || word.size() > kLongestName || !IsUpper(word[0])) return false;
  const auto parts = base::Split(base::Lower(base::Replace(word, "'", "")), "-");
  // People mix the systems from one syllable to the next, but not within what they write together.
  return std::ranges::all_of(parts, [](const std::string& part) {
    return !part.empty() && std::ranges::any_of(kSystems, [&](const Syllables& syllables) {
      return IsMadeOf(syllables, part);
    });
  });
}

}  // namespace tolvex
