// Builds the lexicon's tables from SCOWL, WordNet, Hunspell's word list and the lists of irregular verbs and
// of names.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/databuild/databuild.h"
#include "engine/databuild/wordnet.h"
#include "engine/lexicon/lexicon.h"

class Hunspell;

namespace tolvex::databuild {

struct Entry {
  int level = 255;
  int parts = 0;
  int forms = 0;
  int count = 0;
  std::array<int, kPartCount> senses = {};
  std::set<std::pair<Relation, std::string>> links;
};

class LexiconBuilder {
 public:
  LexiconBuilder();
  ~LexiconBuilder();

  void Read(const Sources& sources);
  void AddTo(TableWriter& writer) const;
  std::size_t Size() const { return entries_.size(); }

 private:
  void ReadScowl(const std::filesystem::path& folder);
  void ReadCounts(const std::filesystem::path& file);
  void ReadSenseCounts(const std::filesystem::path& wordnet);
  void ReadIrregularVerbs(const std::filesystem::path& file);
  void ReadNames(const std::filesystem::path& file);
  void ReadExceptions(const std::filesystem::path& wordnet);

  void AddNames(const WordNet& wordnet);
  void AddParts(const WordNet& wordnet);
  void AddDerivations(const WordNet& wordnet);
  void AddBe();
  void PassSensesToForms();
  void AddVerb(const std::string& verb);
  void AddNoun(const std::string& noun);
  void AddAdjective(const std::string& adjective);
  void AddAtLevel(const std::string& word, int level);
  void Connect(const std::string& lemma, const std::string& form, Relation relation, Relation back,
               int forms);
  std::vector<std::string> Known(const std::vector<std::string>& candidates) const;
  bool IsKnown(const std::string& word) const;

  std::map<std::string, Entry> entries_;
  std::map<std::string, std::pair<std::vector<std::string>, std::vector<std::string>>> irregular_;
  std::map<std::string, std::vector<std::string>> nounExceptions_;
  std::map<std::string, std::vector<std::string>> adjectiveExceptions_;
  std::unique_ptr<Hunspell> hunspell_;
};

/// Regular forms, likeliest first; which of them exist must be looked up.
std::vector<std::string> PastCandidates(const std::string& verb);
std::vector<std::string> IngCandidates(const std::string& verb);
std::string SForm(const std::string& word);
std::vector<std::string> PluralCandidates(const std::string& noun);
std::vector<std::string> CompareCandidates(const std::string& adjective, const std::string& ending);

}  // namespace tolvex::databuild
