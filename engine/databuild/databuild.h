// The steps of databuild, the program that makes the engine's tables.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tolvex::databuild {

/// Trains the tagger on tagged text, one sentence a line ("word/TAG" and "word_TAG" files), and writes its
/// tables. Prints the accuracy on sentences held back. The same inputs give the same bytes.
void TrainTagger(const std::filesystem::path& slashTagged, const std::filesystem::path& underscoreTagged,
                 const std::filesystem::path& model);

/// Counts the n-grams of plain text, one sentence a line on standard input, and of the tagged files, and
/// writes the tables of NgramModel. The same inputs give the same bytes.
void TrainNgrams(const std::filesystem::path& taggerModel, const std::filesystem::path& slashTagged,
                 const std::filesystem::path& underscoreTagged, const std::filesystem::path& model);

/// Trains the ranker of edits on so many sentences, with mistakes made in half of them, and writes its table.
/// `tables` is a compiled file with the lexicon, the tagger and the n-grams. Prints what it finds in
/// sentences held back. The same inputs give the same bytes.
void TrainRanker(const std::filesystem::path& tables, const std::filesystem::path& slashTagged,
                 const std::filesystem::path& underscoreTagged, int sentences,
                 const std::filesystem::path& model);

/// Counts the words of plain text, one sentence a line, read from standard input, and writes those that
/// occur at least three times in small letters, as "word<TAB>count", sorted.
void CountWords(const std::filesystem::path& counts);

/// Where the packaged sources are.
struct Sources {
  std::filesystem::path models;              ///< folder of *.model files: tagger, n-grams, ranker
  std::filesystem::path counts;              ///< written by CountWords
  std::filesystem::path verbs;               ///< the hand list of irregular verbs
  std::filesystem::path names;               ///< the hand list of names
  std::filesystem::path scowl;               ///< folder of the SCOWL word lists
  std::filesystem::path wordnet;             ///< folder of WordNet 3.0
  std::filesystem::path hunspell;            ///< en_US.aff and en_US.dic without their endings
  std::vector<std::filesystem::path> rules;  ///< rule files
};

/// Compiles everything into one table file and prints what it was made from. Throws base::Error with file and
/// line when a source is damaged.
void CompileTables(const Sources& sources, const std::filesystem::path& tables);

/// Copies a link-grammar dictionary folder, leaving out of the word lists what SCOWL has only above `level`.
void TrimParserDictionary(const std::filesystem::path& from, const std::filesystem::path& scowl, int level,
                          const std::filesystem::path& to);

}  // namespace tolvex::databuild
