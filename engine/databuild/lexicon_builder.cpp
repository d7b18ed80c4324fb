#include "engine/databuild/lexicon_builder.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <hunspell/hunspell.hxx>

#include "base/error.h"
#include "base/text.h"
#include "engine/databuild/source_files.h"
#include "engine/tables/hash.h"

namespace tolvex::databuild {
namespace {

constexpr int kRarestLevel = 70;

bool IsPlainWord(std::string_view word) {
  return !word.empty() &&
         std::all_of(word.begin(), word.end(), [](char c) { return IsLower(c) || IsUpper(c) || c == '-'; });
}

std::uint8_t EightLog(int count) {
  return static_cast<std::uint8_t>(std::min(255.0, std::round(8 * std::log2(1.0 + count))));
}

// Hunspell itself treats a missing file as an empty dictionary.
std::unique_ptr<Hunspell> OpenHunspell(const std::string& stem) {
  for (const std::string& path : {stem + ".aff", stem + ".dic"}) {
    if (!std::ifstream(path)) throw base::Error("cannot read " + path);
  }
  return std::make_unique<Hunspell>((stem + ".aff").c_str(), (stem + ".dic").c_str());
}

int PartOfSenseType(char type) {
  switch (type) {
    case '1':
      return 0;
    case '2':
      return 1;
    case '4':
      return 3;
    default:
      return 2;
  }
}

}  // namespace

LexiconBuilder::LexiconBuilder() = default;
LexiconBuilder::~LexiconBuilder() = default;

void LexiconBuilder::Read(const Sources& sources) {
  const WordNet wordnet = ReadWordNet(sources.wordnet);
  hunspell_ = OpenHunspell(sources.hunspell.string());
  ReadScowl(sources.scowl);
  ReadNames(sources.names);
  AddNames(wordnet);
  ReadCounts(sources.counts);
  AddParts(wordnet);
  ReadSenseCounts(sources.wordnet);
  ReadIrregularVerbs(sources.verbs);
  ReadExceptions(sources.wordnet);
  std::vector<std::string> lemmas;
  for (const auto& [word, entry] : entries_) {
    if (entry.level <= kKnownLevel && word.find('-') == std::string::npos) lemmas.push_back(word);
  }
  for (const std::string& lemma : lemmas) {
    const int parts = entries_[lemma].parts;
    if ((parts & kVerbPart) != 0) AddVerb(lemma);
    if ((parts & kNounPart) != 0) AddNoun(lemma);
    if ((parts & kAdjectivePart) != 0) AddAdjective(lemma);
  }
  AddDerivations(wordnet);
  PassSensesToForms();
  AddBe();
}

// "goes" is a verb as often as "go" is one.
void LexiconBuilder::PassSensesToForms() {
  std::map<std::string, std::array<int, kPartCount>> gained;
  for (const auto& [word, entry] : entries_) {
    for (const auto& [relation, lemma] : entry.links) {
      if (relation < Relation::kIsThirdOf || relation > Relation::kIsSuperlativeOf) continue;
      const int part = relation == Relation::kIsPluralOf ? 0 : relation < Relation::kIsPluralOf ? 1 : 2;
      gained[word][part] += entries_.at(lemma).senses[part];
    }
  }
  for (const auto& [word, senses] : gained) {
    for (int part = 0; part < kPartCount; ++part) entries_[word].senses[part] += senses[part];
  }
}

void LexiconBuilder::AddBe() {
  const std::map<std::string, int> forms = {{"be", kBase},   {"is", kThird},        {"was", kPast},
                                            {"were", kPast}, {"been", kParticiple}, {"being", kIng}};
  for (const auto& [word, form] : forms) entries_[word].forms |= form;
}

void LexiconBuilder::ReadScowl(const std::filesystem::path& folder) {
  for (const char* variety : {"english", "american", "british", "british_z", "canadian", "australian"}) {
    for (const char* kind : {"words", "upper", "proper-names"}) {
      for (const int level : {10, 20, 35, 40, 50, 55, 60, kRarestLevel}) {
        std::ifstream in(folder / fmt::format("{}-{}.{}", variety, kind, level));
        for (std::string word; std::getline(in, word);) {
          if (IsPlainWord(word)) AddAtLevel(word, level);
        }
      }
    }
  }
  if (entries_.empty()) throw base::Error("no word lists in " + folder.string());
}

void LexiconBuilder::AddAtLevel(const std::string& word, int level) {
  int& least = entries_[word].level;
  least = std::min(least, level);
}

void LexiconBuilder::ReadNames(const std::filesystem::path& file) {
  ReadLines(file, [&](const std::string& line) {
    if (line.empty() || line[0] == '#') return;
    std::string_view names = line;
    const std::string_view kind = base::PopPiece(names, ": ");
    if (kind != "familiar" && kind != "other") throw base::Error("familiar or other wanted");
    for (const std::string& name : SplitAtBlanks(std::string(names)))
      AddAtLevel(name, kind == "familiar" ? kFamiliarLevel : kRarestLevel);
  });
}

// "Addis Ababa": each word of a name is one.
void LexiconBuilder::AddNames(const WordNet& wordnet) {
  for (const auto& [offset, synset] : wordnet.find("noun")->second.synsets) {
    for (const std::string& words : synset.words) {
      for (const std::string& word : base::Split(words, " ")) {
        const bool isName = word.size() > 2 && IsUpper(word[0]) && IsLower(word[1]) && IsPlainWord(word);
        if (isName) AddAtLevel(word, kRarestLevel);
      }
    }
  }
}

void LexiconBuilder::ReadCounts(const std::filesystem::path& file) {
  ReadLines(file, [&](const std::string& line) {
    const auto fields = SplitAtBlanks(line, 2);
    const auto count = static_cast<int>(Number(fields[1]));
    const auto found = entries_.find(fields[0]);
    if (found != entries_.end()) found->second.count = count;
  });
}

void LexiconBuilder::AddParts(const WordNet& wordnet) {
  for (int part = 0; part < kPartCount; ++part) {
    for (const auto& [word, senses] : wordnet.find(kWordNetParts[part])->second.senses) {
      const auto found = entries_.find(word);
      if (found != entries_.end()) found->second.parts |= 1 << part;
    }
  }
}

void LexiconBuilder::ReadSenseCounts(const std::filesystem::path& wordnet) {
  ReadLines(wordnet / "cntlist.rev", [&](const std::string& line) {
    const auto fields = SplitAtBlanks(line, 3);
    const auto count = static_cast<int>(Number(fields[2]));
    const auto percent = fields[0].find('%');
    if (percent == std::string::npos) throw base::Error("no key of a sense");
    const char type = fields[0].at(percent + 1);
    const auto found = entries_.find(fields[0].substr(0, percent));
    if (found != entries_.end()) found->second.senses[PartOfSenseType(type)] += count;
  });
}

void LexiconBuilder::ReadIrregularVerbs(const std::filesystem::path& file) {
  ReadLines(file, [&](const std::string& line) {
    if (line.empty() || line[0] == '#') return;
    const auto fields = SplitAtBlanks(line, 3);
    irregular_[fields[0]] = {base::Split(fields[1], ","), base::Split(fields[2], ",")};
  });
}

void LexiconBuilder::ReadExceptions(const std::filesystem::path& wordnet) {
  for (auto* exceptions : {&nounExceptions_, &adjectiveExceptions_}) {
    ReadLines(wordnet / (exceptions == &nounExceptions_ ? "noun.exc" : "adj.exc"),
              [&](const std::string& line) {
                const auto fields = SplitAtBlanks(line);
                const std::string& lemma = fields.at(1);
                if (fields.size() == 2 && fields[0] != lemma) (*exceptions)[lemma].push_back(fields[0]);
              });
  }
  nounExceptions_["person"] = {"people", "persons"};
  adjectiveExceptions_["good"] = {"better", "best"};
  adjectiveExceptions_["bad"] = {"worse", "worst"};
  adjectiveExceptions_["far"] = {"farther", "farthest"};
}

bool LexiconBuilder::IsKnown(const std::string& word) const {
  const auto found = entries_.find(word);
  return (found != entries_.end() && found->second.level <= kKnownLevel) || hunspell_->spell(word);
}

std::vector<std::string> LexiconBuilder::Known(const std::vector<std::string>& candidates) const {
  std::vector<std::string> known;
  std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(known),
               [&](const std::string& word) { return IsKnown(word); });
  return known;
}

void LexiconBuilder::Connect(const std::string& lemma, const std::string& form, Relation relation,
                             Relation back, int forms) {
  entries_[lemma].links.insert({relation, form});
  Entry& entry = entries_[form];
  entry.level = std::min(entry.level, kKnownLevel);
  entry.forms |= forms;
  entry.links.insert({back, lemma});
}

void LexiconBuilder::AddVerb(const std::string& verb) {
  // As verbs of their own these are so rare that a learner means the past of "see", "fall"…
  static const std::set<std::string> kRatherPast = {"saw",  "fell",   "felt", "wound",
                                                    "bore", "ground", "are",  "am"};
  if (verb == "be" || verb.size() < 2 || kRatherPast.count(verb) != 0) return;
  const auto irregular = irregular_.find(verb);
  const auto regular = Known(PastCandidates(verb));
  const auto& past = irregular == irregular_.end() ? regular : irregular->second.first;
  const auto& participle = irregular == irregular_.end() ? regular : irregular->second.second;
  const auto ing = Known(IngCandidates(verb));
  const std::string third = verb == "have" ? "has" : SForm(verb);
  if (past.empty() || ing.empty()) return;
  entries_[verb].forms |= kBase;
  for (const auto& form : past) Connect(verb, form, Relation::kPast, Relation::kIsPastOf, kPast);
  for (const auto& form : participle) {
    Connect(verb, form, Relation::kParticiple, Relation::kIsParticipleOf, kParticiple);
  }
  for (const auto& form : ing) Connect(verb, form, Relation::kIng, Relation::kIsIngOf, kIng);
  Connect(verb, third, Relation::kThird, Relation::kIsThirdOf, kThird);
}

void LexiconBuilder::AddNoun(const std::string& noun) {
  if (noun.size() < 2) return;
  const auto exception = nounExceptions_.find(noun);
  const auto plurals = Known(exception == nounExceptions_.end() ? PluralCandidates(noun) : exception->second);
  const bool unchanged =
      plurals.empty() || plurals[0] == noun || entries_[noun].links.count({Relation::kIsPluralOf, noun}) != 0;
  if (unchanged) return;
  entries_[noun].forms |= kSingular;
  for (const auto& plural : plurals) Connect(noun, plural, Relation::kPlural, Relation::kIsPluralOf, kPlural);
}

void LexiconBuilder::AddAdjective(const std::string& adjective) {
  std::vector<std::string> comparative = Known(CompareCandidates(adjective, "er"));
  std::vector<std::string> superlative = Known(CompareCandidates(adjective, "est"));
  const auto exception = adjectiveExceptions_.find(adjective);
  if (exception != adjectiveExceptions_.end()) {
    for (const std::string& form : Known(exception->second)) {
      (form.ends_with("st") ? superlative : comparative).push_back(form);
    }
  }
  if (comparative.empty() || superlative.empty()) return;
  entries_[adjective].forms |= kPositive;
  Connect(adjective, comparative[0], Relation::kComparative, Relation::kIsComparativeOf, kComparative);
  Connect(adjective, superlative[0], Relation::kSuperlative, Relation::kIsSuperlativeOf, kSuperlative);
}

void LexiconBuilder::AddTo(TableWriter& writer) const {
  std::map<std::string, std::uint32_t> number;
  for (const auto& [text, entry] : entries_) number.emplace(text, static_cast<std::uint32_t>(number.size()));
  std::vector<Word> words;
  std::vector<Link> links;
  std::string texts;
  for (const auto& [text, entry] : entries_) {
    Word word;
    word.text = static_cast<std::uint32_t>(texts.size());
    word.links = static_cast<std::uint32_t>(links.size());
    word.letters = LetterSet(text);
    word.forms = static_cast<std::uint16_t>(entry.forms);
    word.length = static_cast<std::uint8_t>(text.size());
    word.level = static_cast<std::uint8_t>(entry.level);
    word.parts = static_cast<std::uint8_t>(entry.parts);
    word.frequency = EightLog(entry.count);
    for (int part = 0; part < kPartCount; ++part) word.senses[part] = EightLog(entry.senses[part]);
    std::vector<std::pair<Relation, std::string>> ordered(entry.links.begin(), entry.links.end());
    std::stable_sort(ordered.begin(), ordered.end(), [&](const auto& a, const auto& b) {
      return entries_.at(a.second).count > entries_.at(b.second).count;
    });
    for (const auto& [relation, other] : ordered) links.push_back({number.at(other), relation, {}});
    word.linkCount = static_cast<std::uint16_t>(ordered.size());
    texts += text;
    words.push_back(word);
  }
  std::vector<std::uint32_t> slots(1U << 19U);
  for (const auto& [text, index] : number) {
    std::size_t i = HashText(text) & (slots.size() - 1);
    while (slots[i] != 0) i = (i + 1) & (slots.size() - 1);
    slots[i] = index + 1;
  }
  writer.AddArray("lexicon.words", words);
  writer.AddArray("lexicon.links", links);
  writer.AddArray("lexicon.slots", slots);
  writer.AddText("lexicon.text", texts);
}

}  // namespace tolvex::databuild
