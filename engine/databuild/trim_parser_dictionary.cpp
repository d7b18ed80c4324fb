#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <set>

#include "base/error.h"
#include "base/text.h"
#include "engine/databuild/databuild.h"
#include "engine/databuild/source_files.h"
#include "engine/text/token.h"

namespace tolvex::databuild {
namespace {

namespace fs = std::filesystem;

std::set<std::string> CommonWords(const fs::path& scowl, int level) {
  std::set<std::string> words;
  for (const auto& entry : fs::directory_iterator(scowl)) {
    const std::string size = entry.path().extension().string();  // ".10"
    const bool sized = size.size() == 3 && IsDigit(size[1]) && IsDigit(size[2]);
    if (!sized || static_cast<int>(Number(size.substr(1))) > level) continue;
    ReadLines(entry.path(), [&](const std::string& word) { words.insert(word); });
  }
  if (words.empty()) throw base::Error("no word lists in " + scowl.string());
  return words;
}

// "run.v-d" is "run"; names, phrases and abbreviations are kept whatever SCOWL says.
bool IsKept(const std::string& item, const std::set<std::string>& common) {
  const std::string word = item.substr(0, item.find('.'));
  const bool plain = !word.empty() && std::all_of(word.begin(), word.end(), IsLower);
  return !plain || common.count(word) != 0;
}

void TrimWordList(const fs::path& from, const std::set<std::string>& common, const fs::path& to) {
  std::ofstream out(to);
  ReadLines(from, [&](const std::string& line) {
    for (const std::string& item : SplitAtBlanks(line)) {
      if (IsKept(item, common)) out << item << '\n';
    }
  });
  if (!out.flush()) throw base::Error("cannot write " + to.string());
}

// The dictionary names its word lists by the folder of its language.
void CopyWithLanguage(const fs::path& from, const fs::path& to) {
  const std::string renamed = "/" + to.parent_path().filename().string() + "/words/";
  std::ofstream out(to);
  if (from.extension() == ".dict") out << "% Changed from link-grammar's own: the paths of the word lists.\n";
  ReadLines(from,
            [&](const std::string& line) { out << base::Replace(line, "/en/words/", renamed) << '\n'; });
  if (!out.flush()) throw base::Error("cannot write " + to.string());
}

}  // namespace

void TrimParserDictionary(const fs::path& from, const fs::path& scowl, int level, const fs::path& to) {
  const std::set<std::string> common = CommonWords(scowl, level);
  fs::create_directories(to / "words");
  for (const auto& entry : fs::directory_iterator(from)) {
    const bool source = entry.path().extension() == ".m4";
    if (entry.is_regular_file() && !source) CopyWithLanguage(entry.path(), to / entry.path().filename());
  }
  std::size_t lists = 0;
  for (const auto& entry : fs::directory_iterator(from / "words")) {
    TrimWordList(entry.path(), common, to / "words" / entry.path().filename());
    ++lists;
  }
  std::ofstream(to / "CHANGES")
      << "A copy of link-grammar's English dictionary (LGPL 2.1), changed: the paths of the word\n"
         "lists name this folder, and rare words are left out of the lists.\n";
  fmt::print("{}: {} word lists\n", to.filename().string(), lists);
}

}  // namespace tolvex::databuild
