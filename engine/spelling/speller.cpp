#include "engine/spelling/speller.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/text.h"
#include "engine/spelling/romanised_name.h"

namespace tolvex {
namespace {

constexpr int kRarestSuggestion = 55;
constexpr int kMostCost = 25;
constexpr std::size_t kMostLengthApart = 2;
constexpr int kMostLettersApart = 4;

// What makes a familiar name or a common word likelier than a name that nobody knows.
constexpr std::size_t kShortestFamiliarName = 5;
constexpr std::size_t kShortestCommonWord = 6;
constexpr int kMostSlipInName = 10;
constexpr int kMostSlipInFirstWord = 12;
constexpr int kMostSlipInCapitalWord = 8;
constexpr int kMostSlipBesideName = 7;
constexpr int kCommonFrequency = 60;

bool IsVowel(char c) { return std::string_view("aeiouy").find(c) != std::string_view::npos; }

// Bits of the groups of letters that sound alike; letters with a common bit do.
constexpr std::array<std::uint8_t, 256> SoundGroups() {
  constexpr std::array<std::string_view, 8> kGroups = {"aeiouy", "cks", "sz", "fv", "gj", "mn", "td", "wv"};
  std::array<std::uint8_t, 256> groups = {};
  for (std::size_t i = 0; i < kGroups.size(); ++i) {
    for (const char letter : kGroups[i])
      groups[static_cast<unsigned char>(letter)] |= static_cast<std::uint8_t>(1U << i);
  }
  return groups;
}

int ExchangeCost(char a, char b) {
  static constexpr auto kSounds = SoundGroups();
  if (a == b) return 0;
  const bool alike = (kSounds[static_cast<unsigned char>(a)] & kSounds[static_cast<unsigned char>(b)]) != 0;
  return alike ? 8 : 11;
}

// A letter too many or too few costs less when it doubles its neighbour or is a silent e.
int GapCost(std::string_view word, std::size_t i) {
  const bool doubles = (i > 0 && word[i - 1] == word[i]) || (i + 1 < word.size() && word[i + 1] == word[i]);
  if (doubles) return 5;
  return IsVowel(word[i]) || word[i] == 'h' ? 8 : 10;
}

// Commoner words are cheaper, and so are words with the same first letter.
int Penalty(const Word& word, std::string_view text, std::string_view written) {
  const int rare = std::max(0, 110 - static_cast<int>(word.frequency)) / 12;
  const int first = text[0] == written[0] ? 0 : 6;
  return rare + first + (word.level > 40 ? 3 : 0);
}

// "eco-friendly", "pre-war"
bool IsCombiningForm(std::string_view part) {
  static constexpr std::array<std::string_view, 14> kForms = {"eco",   "non",   "pre",   "anti",  "co",
                                                              "re",    "ex",    "semi",  "multi", "mini",
                                                              "micro", "inter", "socio", "bio"};
  return std::find(kForms.begin(), kForms.end(), base::Lower(part)) != kForms.end();
}

// "Rio de Janeiro", "Leonardo da Vinci"
bool IsPartOfName(const Sentence& sentence, int i) {
  return sentence.Is(i, {"de", "da", "del", "di", "du", "van", "von", "la", "le", "el", "al", "bin"}) &&
         sentence.At(i + 1).IsCapitalised() && (i < 2 || sentence.IsName(i - 1));
}

// "Jolin Tsai sang.", "Siti and Budi moved."
bool StandsBesideName(const Sentence& sentence, int i) {
  return sentence.IsName(i + 1) || (sentence.Is(i + 1, {"and"}) && sentence.IsName(i + 2));
}

// "amy@example.com", "www.books.com.tw": glued to its neighbours by signs.
bool IsPartOfAddress(const Sentence& sentence, int i) {
  const auto glues = [&](int sign) {
    return sentence.Is(sign, {"@", ".", "_"}) && !sentence.At(sign).spaceBefore &&
           sentence.At(sign - 1).IsWord() && sentence.At(sign + 1).IsWord() &&
           !sentence.At(sign + 1).spaceBefore;
  };
  return glues(i - 1) || glues(i + 1);
}

// "LinkedIn", "eBook"
bool HasInnerCapital(const std::string& text) {
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (IsUpper(text[i]) && IsLower(text[i - 1])) return true;
  }
  return false;
}

}  // namespace

int EditCost(std::string_view written, std::string_view meant, int limit) {
  std::array<std::array<int, kLongestWord + 1>, 3> rows = {};
  std::array<int, kLongestWord + 1> gaps = {};  // of the meant word's letters, counted from 1
  for (std::size_t j = 1; j <= meant.size(); ++j) {
    gaps[j] = GapCost(meant, j - 1);
    rows[0][j] = rows[0][j - 1] + gaps[j];
  }
  for (std::size_t i = 1; i <= written.size(); ++i) {
    auto& row = rows[i % 3];
    const auto& above = rows[(i + 2) % 3];
    const auto& second = rows[(i + 1) % 3];
    const int gap = GapCost(written, i - 1);
    row[0] = above[0] + gap;
    int least = row[0];
    for (std::size_t j = 1; j <= meant.size(); ++j) {
      int cost = above[j - 1] + ExchangeCost(written[i - 1], meant[j - 1]);
      cost = std::min(cost, above[j] + gap);
      cost = std::min(cost, row[j - 1] + gaps[j]);
      const bool swapped = i > 1 && j > 1 && written[i - 1] == meant[j - 2] && written[i - 2] == meant[j - 1];
      if (swapped && written[i - 1] != written[i - 2]) cost = std::min(cost, second[j - 2] + 7);
      row[j] = cost;
      least = std::min(least, cost);
    }
    if (least > limit) return limit + 10;
  }
  return rows[written.size() % 3][meant.size()];
}

Speller::Speller(const Lexicon& lexicon, const WordSet& accepted) : lexicon_(lexicon), accepted_(accepted) {
  for (const Word& word : lexicon.Words()) {
    const std::string_view text = lexicon.Text(word);
    const bool plain = std::all_of(text.begin(), text.end(), IsLower);
    if (word.level <= kRarestSuggestion && plain && text.size() > 1 && text.size() <= kLongestWord)
      candidates_[text.size()].push_back(&word);
    if (IsUpper(text[0]) && word.level <= kFamiliarLevel && text.size() >= kShortestFamiliarName)
      familiarNames_.push_back(text);
  }
}

// "km/h": what is accepted as a word is accepted in a compound.
bool Speller::IsKnownPart(const std::string& part) const {
  return lexicon_.Knows(part) || accepted_.contains(base::Lower(part));
}

bool Speller::Knows(const Token& token) const {
  const bool abbreviation = token.text.back() == '.';
  if (token.text.size() < 2 || abbreviation || lexicon_.Knows(token.text)) return true;
  if (token.text.find_first_of("-/") != std::string::npos) {
    if (IsRomanisedName(token.text)) return true;
    const auto parts = base::Split(base::Replace(token.text, "/", "-"), "-");
    return std::ranges::all_of(parts, [&](const auto& part) {
      return part.size() < 2 || IsKnownPart(part) || IsDigit(part[0]) || IsCombiningForm(part);
    });
  }
  static constexpr std::array<std::string_view, 7> kPrefixes = {"un",    "non", "re",  "over",
                                                                "under", "pre", "anti"};
  return std::ranges::any_of(kPrefixes, [&](std::string_view prefix) {
    const Word* rest =
        token.lower.starts_with(prefix) ? lexicon_.Find(token.lower.substr(prefix.size())) : nullptr;
    return token.lower.size() > 7 && rest != nullptr && rest->level <= 35;
  });
}

std::vector<std::string> Speller::Suggest(std::string_view word, std::size_t most) const {
  if (word.size() + kMostLengthApart > kLongestWord) return {};
  const std::uint32_t letters = LetterSet(word);
  std::vector<std::pair<int, std::string_view>> ranked;
  const std::size_t shortest = word.size() < kMostLengthApart ? 0 : word.size() - kMostLengthApart;
  for (std::size_t length = shortest; length <= word.size() + kMostLengthApart; ++length) {
    for (const Word* candidate : candidates_[length]) {
      if (std::popcount(letters ^ candidate->letters) > kMostLettersApart) continue;
      const std::string_view text = lexicon_.Text(*candidate);
      const int cost = EditCost(word, text, kMostCost);
      if (cost <= kMostCost) ranked.emplace_back(cost + Penalty(*candidate, text, word), text);
    }
  }
  std::sort(ranked.begin(), ranked.end());
  std::vector<std::string> suggestions;
  for (const auto& [cost, text] : ranked) {
    if (suggestions.size() == most || cost > ranked[0].first + 12) break;
    suggestions.emplace_back(text);
  }
  return suggestions;
}

std::string Speller::IrregularForm(const std::string& word) const {
  const auto stem = [&](std::size_t cut) { return word.substr(0, word.size() - cut); };
  if (word.size() > 4 && word.ends_with("ed")) {
    for (const std::string& verb : {stem(2), stem(1), stem(3)}) {
      if ((lexicon_.Forms(verb) & kBase) != 0) return lexicon_.Inflect(verb, kPast);
    }
  }
  if (word.size() > 3 && word.ends_with('s')) return std::string(lexicon_.First(stem(1), Relation::kPlural));
  return {};
}

std::vector<std::string> Speller::Corrections(const Token& token) const {
  constexpr std::size_t kMostSuggestions = 3;
  auto suggestions = Suggest(token.lower, kMostSuggestions);
  if (const std::string form = IrregularForm(token.lower); !form.empty()) {
    std::erase(suggestions, form);
    suggestions.insert(suggestions.begin(), form);
  }
  return suggestions;
}

std::string Speller::FamiliarName(const Token& token) const {
  int least = kMostSlipInName + 1;
  std::string_view nearest;
  for (const std::string_view name : familiarNames_) {
    if (name.size() > token.text.size() + 1 || token.text.size() > name.size() + 1) continue;
    const int cost = EditCost(token.text, name, kMostSlipInName);
    if (cost >= least) continue;
    least = cost;
    nearest = name;
  }
  return std::string(nearest);
}

// Whether the first suggestion is a common word that differs by no more than such a cost.
bool Speller::IsSlip(const Token& token, const std::vector<std::string>& suggestions, int most) const {
  if (suggestions.empty()) return false;
  const Word* word = lexicon_.Find(suggestions[0]);
  return word != nullptr && word->frequency >= kCommonFrequency &&
         EditCost(token.lower, suggestions[0], most) <= most;
}

void Speller::CheckSmallWord(const Token& token, Findings& findings, int i) const {
  const std::string capitalised = Capitalised(token.text);
  const Word* name = lexicon_.Find(capitalised);
  if (name == nullptr || name->level > kKnownLevel) {
    findings.Add("misspelled", i, i, Corrections(token));
  } else if (name->level <= kFamiliarLevel) {
    findings.Add("name-capital", i, i, {capitalised});
  }
}

// A capital at the start says little: a word that looks like a name is one if no common word is near.
void Speller::CheckFirstWord(const Sentence& sentence, Findings& findings, int i) const {
  const Token& token = sentence.At(i);
  auto suggestions = Corrections(token);
  const bool besideName = StandsBesideName(sentence, i);
  const bool isNameLike = besideName || lexicon_.Find(token.text) != nullptr || sentence.Is(i + 1, {"'s"}) ||
                          IsRomanisedName(token.text);
  const int mostSlip = besideName ? kMostSlipBesideName : kMostSlipInFirstWord;
  const bool isName = suggestions.empty() || (isNameLike && !IsSlip(token, suggestions, mostSlip));
  const std::string familiar = FamiliarName(token);
  if (isName && (familiar.empty() || IsRomanisedName(token.text))) return;
  for (auto& suggestion : suggestions) suggestion = Capitalised(suggestion);
  if (!familiar.empty()) suggestions.insert(suggestions.begin(), familiar);
  findings.Add("misspelled", i, i, std::move(suggestions));
}

void Speller::CheckName(const Token& token, Findings& findings, int i) const {
  if (lexicon_.Find(token.text) != nullptr || IsRomanisedName(token.text)) return;
  if (const std::string familiar = FamiliarName(token); !familiar.empty()) {
    findings.Add("unknown-name", i, i, {familiar});
  } else if (token.text.size() >= kShortestCommonWord) {
    const auto suggestions = Corrections(token);
    if (IsSlip(token, suggestions, kMostSlipInCapitalWord))
      findings.Add("unknown-name", i, i, {Capitalised(suggestions[0])});
  }
}

void Speller::CheckWord(const Sentence& sentence, Findings& findings, int i) const {
  const Token& token = sentence.At(i);
  const bool shout = token.text.size() > 1 && IsUpper(token.text[0]) && IsUpper(token.text[1]);
  if (shout || accepted_.contains(token.lower) || HasInnerCapital(token.text) || IsPartOfName(sentence, i) ||
      IsPartOfAddress(sentence, i))
    return;
  if (!token.IsCapitalised()) {
    CheckSmallWord(token, findings, i);
  } else if (sentence.IsName(i)) {
    CheckName(token, findings, i);
  } else {
    CheckFirstWord(sentence, findings, i);
  }
}

void Speller::Check(const Sentence& sentence, Findings& findings) const {
  int looked = 0;
  for (int i = 0; i < sentence.Size(); ++i) {
    const Token& token = sentence.At(i);
    const bool contracted = token.text[0] == '\'' || token.lower == "n't" || sentence.Is(i + 1, {"n't"});
    const bool foreign = std::any_of(token.text.begin(), token.text.end(),
                                     [](char c) { return static_cast<unsigned char>(c) > 127; });
    if (!token.IsWord() || contracted || foreign || Knows(token)) continue;
    constexpr int kMostUnknown = 12;  // a text of unknown words is no English; keep the time bounded
    if (++looked > kMostUnknown) return;
    CheckWord(sentence, findings, i);
  }
}

}  // namespace tolvex
