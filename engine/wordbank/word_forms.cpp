// The forms of the words of a clause that is in English order.
#include <algorithm>

#include "engine/wordbank/clause.h"
#include "engine/wordbank/english_forms.h"

namespace wexbin {
namespace {

bool IsPreposition(std::string_view english) {
  return IsOneOf(english, {"at", "to", "with", "for", "than", "by", "toward", "from", "in", "on", "under",
                           "next to", "behind", "near", "in front of", "like"});
}

// What somebody thinks or says has a verb of its own.
bool BeginsClause(std::string_view verb) {
  return verb.starts_with("think") || verb.starts_with("say") || verb.starts_with("know");
}

class Grammar {
 public:
  Grammar(Clause& clause, const EnglishForms& forms) : clause_(clause), forms_(forms), isPast_(IsPast()) {}

  void Run() {
    for (std::size_t i = 0; i < clause_.size(); ++i) {
      InflectNot(i);
      InflectDo(i);
      AddBeBeforeDegree(i);
      MakeProgressive(i);
      if (IsVerb(clause_[i])) {
        InflectVerb(i);
      } else if (i > 0 && TakesObject(Before(i))) {
        clause_[i].english = Objective(clause_[i].english);
      }
    }
    Ask();
  }

 private:
  // 了 and 過 after the verb, or a time that is over.
  bool IsPast() const {
    bool hasVerb = false;
    for (const Piece& piece : clause_) {
      if (IsOneOf(piece.chinese, {"昨天", "去年", "剛才", "刚才", "前天", "以前"})) return true;
      if (IsOneOf(piece.chinese, {"太", "要", "快", "不", "會", "会", "別", "别", "請", "请"})) return false;
      if (hasVerb && IsOneOf(piece.chinese, {"了", "過", "过"})) return true;
      hasVerb = hasVerb || IsVerb(piece);
    }
    return false;
  }

  bool VerbFollows(std::size_t i) const { return i + 1 < clause_.size() && IsVerb(clause_[i + 1]); }

  // The place of the last piece before i that has English words; the one past the end when there is none.
  std::size_t PlaceBefore(std::size_t i) const {
    while (i > 0 && clause_[i - 1].english.empty()) --i;
    return i == 0 ? clause_.size() : i - 1;
  }
  std::string Before(std::size_t i) const {
    const std::size_t at = PlaceBefore(i);
    return at == clause_.size() ? std::string() : clause_[at].english;
  }
  bool TakesObject(const std::string& before) const { return before == lastVerb_ || IsPreposition(before); }

  // Who does what the verb says, before any adverbs.
  std::size_t SubjectOf(std::size_t i) const {
    std::size_t at = PlaceBefore(i);
    while (at != clause_.size() && clause_[at].part == 'd') at = PlaceBefore(at);
    return at;
  }

  bool IsSingular(std::size_t subject) const {
    if (subject == clause_.size()) return false;
    const Piece& piece = clause_[subject];
    if (IsOneOf(piece.english, {"he", "she", "it", "everyone", "who", "this", "that"})) return true;
    const bool isJoined = IsOneOf(Before(subject), {"and", "with"});
    return piece.part == 'n' && !piece.isPlural && !isJoined;
  }

  void InflectNot(std::size_t i) {
    std::string& english = clause_[i].english;
    if (english == "not" && VerbFollows(i)) {
      english = isPast_ ? "did not" : IsSingular(SubjectOf(i)) ? "does not" : "do not";
    }
    if (english == "do not have" && VerbFollows(i)) english = "did not";
    if (english == "did not" && !VerbFollows(i)) english = "do not have";
    if (english == "do not have" && IsSingular(SubjectOf(i))) english = "does not have";
  }

  void InflectDo(std::size_t i) {
    if (clause_[i].part != kHelper) return;
    clause_[i].english = isPast_ ? "did" : IsSingular(i + 1) ? "does" : "do";
    hasHelper_ = true;
  }

  // "The weather very good" wants its verb; "very good weather" does not.
  void AddBeBeforeDegree(std::size_t i) {
    if (!IsOneOf(clause_[i].english, {"very", "too", "really", "not", "so"}) || i == 0 || VerbFollows(i))
      return;
    const bool attribute = i + 2 < clause_.size() && IsOneOf(clause_[i + 2].chinese, {"的", "地"});
    const std::string subject = Before(i);
    const bool bare = subject.empty() || (hasVerb_ && !BeginsClause(lastVerb_)) ||
                      IsOneOf(subject, {"is", "a", "and", "but", "or", "I am", "you are", "also", "all"});
    const std::size_t at = PlaceBefore(i);
    const bool isPlural = at != clause_.size() && clause_[at].isPlural;
    if (!attribute && !bare)
      clause_[i].english = BeOf(isPlural ? "they" : subject) + ' ' + clause_[i].english;
  }

  // "She now listen to music" is "She is listening to music".
  void MakeProgressive(std::size_t i) {
    const bool isNow = IsOneOf(clause_[i].chinese, {"正在", "在"}) && VerbFollows(i) && i > 0;
    if (!isNow || clause_[i].english.empty()) return;
    const std::size_t subject = PlaceBefore(i);
    const bool isPlural = subject != clause_.size() && clause_[subject].isPlural;
    clause_[i].english = BeOf(isPlural ? "they" : Before(i));
    std::string& verb = clause_[i + 1].english;
    verb = forms_.Gerund(verb.substr(3));
    hasVerb_ = true;
    lastVerb_ = verb;
  }

  void InflectVerb(std::size_t i) {
    std::string& english = clause_[i].english;
    const bool last = std::all_of(clause_.begin() + static_cast<std::ptrdiff_t>(i) + 1, clause_.end(),
                                  [](const Piece& piece) { return piece.english.empty(); });
    if (english == "to want to" && !VerbFollows(i)) english = "to want";
    const bool openEnd = english.ends_with(" to") && (VerbFollows(i) || last);  // no place follows
    if (openEnd) english.resize(english.size() - 3);
    const std::string before = Before(i);
    const bool isBare = hasHelper_ || IsModal(before) || IsModal(Before(PlaceBefore(i)));
    if (before != lastVerb_ || lastVerb_.empty()) {  // not "like to eat"
      english.erase(0, 3);
      if (!isBare && !hasVerb_) english = Finite(i, english);
    }
    hasVerb_ = true;
    lastVerb_ = english;
  }

  std::string Finite(std::size_t i, const std::string& verb) const {
    const std::size_t subject = SubjectOf(i);
    const bool hasNone =
        subject == clause_.size() || IsOneOf(std::string_view(&clause_[subject].part, 1), {"t", "c"});
    const bool isWeather = IsOneOf(verb, {"rain", "snow", "rain heavily"}) && hasNone;
    const std::string form = isPast_                            ? forms_.Past(verb)
                             : isWeather || IsSingular(subject) ? forms_.ThirdPerson(verb)
                                                                : verb;
    return (isWeather ? "it " : "") + form;
  }

  // "You can help me?" is "Can you help me?".
  void Ask() {
    const bool isQuestion = std::ranges::any_of(clause_, [](const Piece& piece) {
      return IsOneOf(piece.chinese, {"嗎", "吗"});
    });
    if (!isQuestion || clause_.size() < 2) return;
    std::string& second = clause_[1].english;
    const bool canLead = IsOneOf(second, {"is", "can", "will", "should", "must"});
    if (canLead) std::swap(clause_[0], clause_[1]);
  }

  Clause& clause_;
  const EnglishForms& forms_;
  const bool isPast_;
  bool hasVerb_ = false;
  bool hasHelper_ = false;
  std::string lastVerb_;
};

}  // namespace

bool IsModal(std::string_view english) {
  return IsOneOf(english, {"can", "will", "should", "must", "cannot", "will not", "do not", "does not",
                           "did not", "please"});
}

void Inflect(Clause& clause, const EnglishForms& forms) { Grammar(clause, forms).Run(); }

}  // namespace wexbin
