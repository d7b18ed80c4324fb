// The word lists of the rule files that the checks ask for, by their names there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "engine/rules/rule.h"

namespace tolvex {

inline constexpr std::string_view kListNames =
    "adverbs_before_verb after_pair ages always_capital answer_openers asked_subjects auxiliaries "
    "bare_auxiliaries "
    "before_bare_verb before_hidden_verb before_pair before_unit beginnings calendar clause_breaks "
    "clause_words common_comparatives comparing_words count_nouns determiners_after_article "
    "determiners_of_many double_be_openers either_number end_marks event_verbs family female "
    "fits_one_different fixed_adjectives full_forms_of_be gerund_subjects giving_verbs governing_verbs "
    "group_adverbs infinitive_takers inserted_opinions inserted_verbs inverted_auxiliaries known_places "
    "lasting_changes lasting_states lasting_verbs linking_verbs male many_with_a marks_before_capital "
    "may_double may_have_participle measures_of_time modal narrowing_words never_after_article "
    "never_after_be never_after_full_be never_with_a no_gerund_subjects no_main_clause no_plain_future "
    "not_before_last not_before_past_time object_pronouns object_too one_or_more_of one_owner "
    "opening_times opinion_verbs other_clause others_meant own_things own_verbs owners_and_pointers "
    "past_points person_plurals persons phrase_prepositions place_prepositions plain_openers "
    "plural_after_there plural_looking plural_only plural_people plural_quantities points_in_life "
    "present_words pronoun_openers pronoun_subject quantity_words question_openers reporting_verbs roles "
    "short_adjectives single_things singular_pronouns small_numbers small_words speech_signs "
    "splice_subjects stages_of_life subject_determiners subject_openers subjunctive_triggers subordinate "
    "subordinate_inside timeless_verbs timetable_verbs towns_and_homes unchanged_after_number uncounted "
    "unreal_openers what_clause";

/// One of kListNames: any other literal does not compile.
struct ListName {
  consteval ListName(const char* name) {
    for (std::string_view rest = kListNames; rest.substr(0, rest.find(' ')) != name; ++number)
      rest = rest.substr(rest.find(' ')).substr(1);
  }
  std::size_t number = 0;
};

class Lists {
 public:
  /// Throws std::runtime_error when the rules, which must outlive the lists, lack one of them.
  explicit Lists(const RuleBook& rules) {
    for (const std::string& name : base::Split(kListNames, " ")) lists_.push_back(&rules.List(name));
  }

  const WordSet& operator[](ListName name) const { return *lists_[name.number]; }

 private:
  std::vector<const WordSet*> lists_;
};

}  // namespace tolvex
