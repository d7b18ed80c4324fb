#include "engine/databuild/cedict.h"

#include <algorithm>
#include <array>

#include "base/error.h"
#include "base/text.h"
#include "engine/databuild/source_files.h"

namespace tolvex::databuild {
namespace {

constexpr std::array<std::string_view, 17> kReferences = {
    "surname ",  "variant of ", "old variant of ", "Japanese variant of ", "erhua variant of ", "used in ",
    "see ",      "see also ",   "classifier for ", "classifier: ",         "abbr. for ",        "(used ",
    "particle ", "also pr. ",   "Taiwan pr. ",     "also written",         "(classifier"};
constexpr std::array<std::string_view, 10> kMarks = {"(bound form)", "(literary)", "(archaic)",   "(old)",
                                                     "(dialect)",    "(slang)",    "(classical)", "(vulgar)",
                                                     "(Buddhism)",   "(Tw)"};

// What a sense neither begins nor ends with.
constexpr std::string_view kEnds = " ;";

bool StartsWithAny(std::string_view text, const auto& starts) {
  return std::any_of(starts.begin(), starts.end(), [&](std::string_view s) { return text.starts_with(s); });
}

// What the input box of the program accepts.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= 'z'; });
}

// Blanks evened out, none before a closing sign.
std::string Tidied(std::string_view text) {
  std::string tidy;
  for (const char c : base::Trimmed(text, kEnds)) {
    const bool closes = c == ' ' || c == ',' || c == ';' || c == ')';
    if (closes && !tidy.empty() && tidy.back() == ' ') tidy.pop_back();
    tidy += c;
  }
  return tidy;
}

// The text without every stretch between two signs, these included.
std::string Without(std::string_view text, char open, char close) {
  std::string kept;
  int depth = 0;
  for (const char c : text) {
    if (c == open) ++depth;
    if (depth == 0) kept += c;
    if (c == close && depth > 0) --depth;
  }
  return kept;
}

}  // namespace

std::vector<CedictEntry> ReadCedict(std::istream& in) {
  std::vector<CedictEntry> entries;
  ReadLines(in, "the Chinese dictionary", [&](const std::string& line) {
    const auto fields = base::Split(line, "\t");
    if (fields.size() != 4 || fields[0].empty() || fields[1].empty() || fields[3].empty())
      throw base::Error("two ways to write, a kind and senses expected");
    entries.push_back({fields[0], fields[1], fields[2] == "name", base::Split(fields[3], "/")});
  });
  if (entries.empty()) throw base::Error("the Chinese dictionary is empty");
  return entries;
}

void ReadUses(const std::filesystem::path& path, const UseReader& read) {
  ReadLines(path, [&](const std::string& line) {
    const auto fields = SplitAtBlanks(line, 3);
    read(fields[0], static_cast<int>(Number(fields[1])), fields[2][0]);
  });
}

bool IsReference(std::string_view sense) { return StartsWithAny(sense, kReferences); }

bool IsMarkedSense(std::string_view sense) { return StartsWithAny(sense, kMarks); }

std::string WithoutParentheses(std::string_view text) { return Tidied(Without(text, '(', ')')); }

std::string ReadableSense(std::string_view sense) {
  for (const std::string_view mark : kMarks) {
    if (sense.starts_with(mark)) sense.remove_prefix(mark.size());
  }
  std::string text = Without(sense, '[', ']');
  if (!IsPlain(text)) text = WithoutParentheses(text);
  return IsPlain(text) ? Tidied(text) : std::string();
}

std::string WordInSentence(std::string_view sense) {
  const std::string text = WithoutParentheses(Without(sense, '[', ']'));
  std::string_view first = std::string_view(text).substr(0, text.find(';'));
  if (const auto comma = first.find(", "); comma != std::string_view::npos) first = first.substr(0, comma);
  for (const std::string_view opener : {"fig. ", "lit. "}) {
    if (first.starts_with(opener)) first.remove_prefix(opener.size());
  }
  return IsPlain(first) ? base::Trim(first, kEnds) : std::string();
}

}  // namespace tolvex::databuild
