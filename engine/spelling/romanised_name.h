// Chinese names in Latin letters.
#pragma once

#include <string_view>

namespace tolvex {

/// Whether a word with a capital can be a Chinese name: syllables of Hanyu Pinyin, Tongyong Pinyin or
/// Wade-Giles, written together ("Meihua", "Xi'an") or joined by hyphens ("Chih-ming", "Yi-Jun"). Apostrophes
/// may be left out, as they are on most signs and passports.
bool IsRomanisedName(std::string_view word);

}  // namespace tolvex
