#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "engine/databuild/databuild.h"
#include "engine/databuild/lexicon_builder.h"
#include "engine/rules/rule.h"
#include "engine/tables/table_file.h"

namespace tolvex::databuild {
namespace {

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(in), {}};
}

bool IsExample(std::string_view line) {
  return line.starts_with("wrong ") || line.starts_with("right ") || line.starts_with("#") || line.empty();
}

// The rules as the engine reads them: without examples and comments.
std::string WithoutExamples(const std::string& text) {
  std::string kept;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = std::min(text.find('\n', at), text.size());
    const std::string_view line = std::string_view(text).substr(at, end - at);
    if (!IsExample(line)) kept += std::string(line) + '\n';
    at = end + 1;
  }
  return kept;
}

// A model that is not there is left out, so that the tables that the ranker is trained on can be made.
void AddModels(const std::filesystem::path& folder, TableWriter& writer) {
  for (const char* name : {"tagger.model", "ngrams.model", "ranker.model"}) {
    if (!std::filesystem::exists(folder / name)) continue;
    const TableFile model(folder / name);
    for (const auto& [section, bytes] : model.Sections()) writer.AddBytes(section, bytes);
  }
}

std::size_t AddRules(const std::vector<std::filesystem::path>& files, TableWriter& writer) {
  RuleBook book;
  std::string all;
  for (const auto& file : files) {
    const std::string text = ReadText(file);
    book.Add(text, file.filename().string());
    all += WithoutExamples(text);
  }
  writer.AddText("rules", all);
  return book.Rules().size();
}

}  // namespace

void CompileTables(const Sources& sources, const std::filesystem::path& tables) {
  TableWriter writer;
  AddModels(sources.models, writer);
  LexiconBuilder lexicon;
  lexicon.Read(sources);
  lexicon.AddTo(writer);
  const std::size_t rules = AddRules(sources.rules, writer);
  writer.Write(tables);
  fmt::print("{}: {} words, {} rules\n", tables.filename().string(), lexicon.Size(), rules);
}

}  // namespace tolvex::databuild
