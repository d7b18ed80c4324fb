#include <fmt/format.h>

#include "engine/databuild/databuild.h"
#include "engine/databuild/lexicon_builder.h"
#include "engine/databuild/source_files.h"
#include "engine/rules/rule.h"
#include "engine/tables/table_file.h"

namespace tolvex::databuild {
namespace {

// The engine reads the rules without examples and comments.
bool IsExample(std::string_view line) {
  return line.starts_with("wrong ") || line.starts_with("right ") || line.starts_with("#") || line.empty();
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
    std::string text;
    ReadLines(file, [&](const std::string& line) {
      text += line + '\n';
      if (!IsExample(line)) all += line + '\n';
    });
    book.Add(text, file.filename().string());
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
