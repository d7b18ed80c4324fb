// Reading CC-CEDICT and making its senses readable.
#pragma once

#include <filesystem>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"

namespace tolvex::databuild {

struct CedictEntry {
  std::string traditional;
  std::string simplified;
  bool isName = false;  ///< the reading is capitalised: a place, a person, a surname
  std::vector<std::string> senses;
};

/// Lines "traditional<TAB>simplified<TAB>kind<TAB>senses", kind "name" or "", senses between slashes. Throws
/// base::Error with the number of the line when one has another form.
std::vector<CedictEntry> ReadCedict(std::istream& in);

/// Reads jieba's dictionary, lines "word count tag" in simplified characters. A tag begins with the part of
/// speech. Throws base::Error with file and line when it is damaged.
using UseReader = std::function<void(const std::string& word, int count, char part)>;
void ReadUses(const std::filesystem::path& path, const UseReader& read);

/// A sense that only points to another word: "variant of …", "used in …", "surname …", "classifier for …".
bool IsReference(std::string_view sense);

/// A sense marked as literary, bound, old or of a dialect.
bool IsMarkedSense(std::string_view sense);

/// The sense in the signs from blank to z, without Chinese words, readings and usage labels; empty when
/// nothing is left.
std::string ReadableSense(std::string_view sense);

/// The first meaning of a sense as it is used in a sentence: no remarks in parentheses; a verb with "to ".
std::string WordInSentence(std::string_view sense);

/// The text without what is in parentheses, blanks evened out.
std::string WithoutParentheses(std::string_view text);

}  // namespace tolvex::databuild
