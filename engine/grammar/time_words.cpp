#include "engine/grammar/time_words.h"

namespace tolvex {
namespace {

// Long sentences with a year mostly describe a table or a plan of that year.
constexpr int kMostTokensOfStory = 10;

// Later years may be plans.
bool IsPastYear(const Sentence& sentence, int i) {
  const std::string& year = sentence.Lower(i);
  const bool digits = year.size() == 4 && year.find_first_not_of("0123456789") == std::string::npos;
  if (sentence.Size() > kMostTokensOfStory) return false;
  const bool ends = sentence.IsSign(i + 1) || sentence.TagAt(i + 1) == Tag::PRP || sentence.Is(i + 1, {"my"});
  return digits && ends && year >= "1800" && year < "2024";
}

bool IsCalendarWord(const Sentence& sentence, int i) {
  return sentence.Is(i, {"week",      "year",     "month",     "night",    "sunday",  "monday",    "tuesday",
                         "wednesday", "thursday", "friday",    "saturday", "summer",  "winter",    "spring",
                         "fall",      "autumn",   "weekend",   "semester", "january", "february",  "march",
                         "april",     "may",      "june",      "july",     "august",  "september", "october",
                         "november",  "december", "christmas", "evening",  "term"});
}

}  // namespace

bool NamesPast(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"yesterday", "ago"})) return true;
  if (sentence.Lower(i) == "in" && sentence.TagAt(i + 1) == Tag::CD) return IsPastYear(sentence, i + 1);
  if (sentence.Lower(i) == "in" && sentence.Lower(i + 1) == "the" && sentence.Lower(i + 2) == "past")
    return sentence.IsSign(i + 3);
  return sentence.Lower(i) == "last" && IsCalendarWord(sentence, i + 1) &&
         !sentence.Is(i - 1, {"the", "since", "'s", "at", "my", "his", "her", "our", "their"});
}

bool NamesFuture(const Sentence& sentence, int i) {
  if (sentence.Lower(i) == "tomorrow") return true;
  return sentence.Lower(i) == "next" && IsCalendarWord(sentence, i + 1) &&
         !sentence.Is(i - 1, {"the", "very"});
}

bool TellsOfPresent(const Sentence& sentence) {
  return sentence.AnyBefore(
      sentence.Size(), {"now", "today", "nowadays", "still", "always", "usually", "often", "every", "never",
                        "anymore", "sometimes", "\"", "'", "ever", "since", "lately"});
}

}  // namespace tolvex
