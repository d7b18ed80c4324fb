// The data that the detector's network is trained on.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tolvex::databuild {

/// A text of one sentence a line, and how often each of its sentences is used in a pass: 0.5 is every other.
struct WeightedText {
  std::filesystem::path path;
  double weight = 1;
};

/// "FILE" or "FILE:WEIGHT". Throws base::Error when the weight is no number.
WeightedText ReadWeightedText(const std::string& argument);

/// Counts words and lemmas of the texts and writes the commonest as the network's vocabulary. `tables` is a
/// compiled file with the lexicon and the tagger.
void MakeDetectorVocabulary(const std::filesystem::path& tables, const std::filesystem::path& vocabulary,
                            const std::vector<WeightedText>& texts);

/// Writes one part of a pass over the texts as labelled examples, half of them with new mistakes. Part
/// `part` + `parts` is the same part of the next pass, with other mistakes. Part -1 is what no other part
/// holds: one sentence in 500, to measure with. The same arguments give the same bytes.
///
/// "examples.tokens" has a row of 16 bytes for each token: the fields of DetectorInput, whether it is wrong,
/// its MistakeKind, its MistakeClass, its Mend. "examples.ends" has the number of the first token after each
/// sentence.
void MakeDetectorExamples(const std::filesystem::path& tables, const std::filesystem::path& vocabulary,
                          int part, int parts, const std::filesystem::path& examples,
                          const std::vector<WeightedText>& texts);

/// Prints so many mistakes of each kind, made in the sentences of standard input:
/// "kind<TAB>class<TAB>sentence" with the wrong tokens in brackets.
void ShowMistakes(const std::filesystem::path& tables, int each);

}  // namespace tolvex::databuild
