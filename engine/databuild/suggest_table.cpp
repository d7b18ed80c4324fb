// Precomputes the suggestions: which weak pairs have a clearly stronger partner.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <vector>

#include "engine/databuild/bankbuild.h"
#include "engine/databuild/cedict.h"
#include "engine/databuild/source_files.h"
#include "engine/tables/table_file.h"
#include "engine/wordbank/text_table.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kBestPartners = 5;  // a suggestion must be among the first of its head
constexpr int kTimesStronger = 4;

struct Partner {
  std::string word;
  int count = 0;
};

using Partners = std::map<std::string, std::vector<Partner>>;  // by "CODE head", the strongest first

Partners ReadPartners(const std::filesystem::path& path) {
  Partners partners;
  std::ifstream in = Open(path);
  for (std::string line; std::getline(in, line);) {
    const auto fields = SplitAt(line, '\t');
    for (std::size_t i = 1; i < fields.size(); ++i) {
      const auto parts = SplitAt(fields[i], ':');
      if (parts.size() != 3) throw std::runtime_error("a damaged word pair: " + line);
      partners[fields[0]].push_back({parts[0], std::stoi(parts[1])});
    }
  }
  return partners;
}

struct Advice {
  std::string kind;  // only, pair, fine, word
  std::string code;
  std::string weak;
  std::vector<std::string> words;
};

std::vector<Advice> ReadAdvice(const std::filesystem::path& path) {
  std::vector<Advice> all;
  std::ifstream in = Open(path);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    const auto colon = line.find(": ");
    const auto head = SplitAtBlanks(line.substr(0, colon));
    if (colon == std::string::npos || head.size() < 3)
      throw std::runtime_error(fmt::format("{}: {}", path.string(), line));
    const std::string weak = line.substr(line.find(head[2], head[0].size() + head[1].size() + 2),
                                         colon - (head[0].size() + head[1].size() + 2));
    all.push_back({head[0], head[1], weak, SplitAtBlanks(line.substr(colon + 1))});
  }
  return all;
}

// The first of the better words that stands high in the list of the head, when the weak one is far behind it.
std::string BetterPartner(const Advice& advice, const std::vector<Partner>& partners) {
  const auto weak =
      std::find_if(partners.begin(), partners.end(), [&](const Partner& p) { return p.word == advice.weak; });
  const int weakCount = weak == partners.end() ? 1 : weak->count;
  for (std::size_t i = 0; i < std::min(kBestPartners, partners.size()); ++i) {
    const bool better =
        std::find(advice.words.begin(), advice.words.end(), partners[i].word) != advice.words.end();
    if (better && partners[i].count >= kTimesStronger * weakCount) return partners[i].word;
  }
  return {};
}

void AddPairAdvice(const Advice& advice, const Partners& partners, const std::set<std::string>& fine,
                   std::map<std::string, std::string>& texts) {
  for (auto at = partners.lower_bound(advice.code + ' '); at != partners.end(); ++at) {
    if (!at->first.starts_with(advice.code + ' ')) break;
    const std::string better = BetterPartner(advice, at->second);
    const std::string key = at->first + ' ' + advice.weak;
    if (!better.empty() && fine.count(key) == 0) texts.emplace(key, better);
  }
}

// "big heavy": the weak word and the better one.
void AddOnly(const Advice& advice, std::map<std::string, std::string>& texts) {
  const auto words = SplitAtBlanks(advice.weak);
  if (words.size() != 2) throw std::runtime_error("two words expected: " + advice.weak);
  for (const std::string& head : advice.words) {
    texts.emplace(fmt::format("{} {} {}", advice.code, head, words[0]), words[1]);
  }
}

}  // namespace

void CompileSuggestions(const std::filesystem::path& pairs, const std::filesystem::path& preciseWords,
                        const std::filesystem::path& tables) {
  const Partners partners = ReadPartners(pairs);
  const std::vector<Advice> all = ReadAdvice(preciseWords);
  std::set<std::string> fine;
  for (const Advice& advice : all) {
    if (advice.kind != "fine") continue;
    for (const std::string& head : advice.words) {
      fine.insert(fmt::format("{} {} {}", advice.code, head, advice.weak));
    }
  }
  std::map<std::string, std::string> texts;
  for (const Advice& advice : all) {
    if (advice.kind == "only") AddOnly(advice, texts);
    if (advice.kind == "pair") AddPairAdvice(advice, partners, fine, texts);
    if (advice.kind == "word") {
      texts.emplace(advice.weak, fmt::format("{}\t{}", advice.code, fmt::join(advice.words, "、")));
    }
  }
  TableWriter writer;
  wexbin::AddTextTable(texts, "suggest", writer);
  writer.Write(tables);
  fmt::print("{}: {} entries\n", tables.filename().string(), texts.size());
}

}  // namespace tolvex::databuild
