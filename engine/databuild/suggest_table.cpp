// Precomputes the suggestions: which weak pairs have a clearly stronger partner.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <vector>

#include "base/error.h"
#include "engine/databuild/bankbuild.h"
#include "engine/databuild/source_files.h"
#include "engine/tables/table_file.h"
#include "engine/wordbank/text_table.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kBestPartners = 5;  // a suggestion must be among the first of its head
constexpr int kTimesStronger = 4;

using Partners = std::map<std::string, std::vector<CountedPair>>;  // by "CODE head", the strongest first

struct Advice {
  std::string kind;  // only, pair, fine, word
  std::string code;
  std::string weak;  // of "only": the weak word and the better one
  std::vector<std::string> words;
};

Advice ParseAdvice(const std::string& line) {
  const auto colon = line.find(": ");
  const auto head = SplitAtBlanks(line.substr(0, colon));
  if (colon == std::string::npos || head.size() < 3) throw base::Error("KIND CODE WEAK: WORDS expected");
  const bool known = head[0] == "pair" || head[0] == "fine" || head[0] == "word" || head[0] == "only";
  if (!known || (head[0] == "only" && head.size() != 4))
    throw base::Error("pair, fine, word or only expected");
  return {head[0], head[1], fmt::format("{}", fmt::join(head.begin() + 2, head.end(), " ")),
          SplitAtBlanks(line.substr(colon + 1))};
}

std::vector<Advice> ReadAdvice(const std::filesystem::path& path) {
  std::vector<Advice> all;
  ReadLines(path, [&](const std::string& line) {
    if (!line.empty() && line[0] != '#') all.push_back(ParseAdvice(line));
  });
  return all;
}

// The first of the better words that is high in the list of the head, when the weak one is far below it.
std::string BetterPartner(const Advice& advice, const std::vector<CountedPair>& partners) {
  const auto weak = std::find_if(partners.begin(), partners.end(),
                                 [&](const CountedPair& p) { return p.pair.partner == advice.weak; });
  const int weakCount = weak == partners.end() ? 1 : weak->count;
  for (std::size_t i = 0; i < std::min(kBestPartners, partners.size()); ++i) {
    const bool better = std::ranges::count(advice.words, partners[i].pair.partner) > 0;
    if (better && partners[i].count >= kTimesStronger * weakCount) return partners[i].pair.partner;
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

void AddOnly(const Advice& advice, std::map<std::string, std::string>& texts) {
  const auto words = SplitAtBlanks(advice.weak);
  for (const std::string& head : advice.words) {
    texts.emplace(fmt::format("{} {} {}", advice.code, head, words[0]), words[1]);
  }
}

}  // namespace

void CompileSuggestions(const std::filesystem::path& pairs, const std::filesystem::path& preciseWords,
                        const std::filesystem::path& tables) {
  Partners partners;
  ReadPairs(pairs, [&](const std::string& key, const std::vector<CountedPair>& of) { partners[key] = of; });
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
