#include "engine/ranker/features.h"

#include <algorithm>
#include <cmath>

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

constexpr int kNone = -1;

class Extractor {
 public:
  Extractor(const Sentence& sentence, const Edit& edit, const NgramView& view,
            std::vector<std::uint32_t>& features)
      : sentence_(sentence), edit_(edit), view_(view), features_(features) {
    left_ = edit.first - 1;
    right_ = edit.last + 1;
    kind_ = static_cast<std::uint64_t>(edit.kind);
    change_ = Join(kind_, ClassOfChange());
    words_ = Join(Join(kind_, OldWords()), NewWords());
    isWordy_ = kind_ != static_cast<std::uint64_t>(EditKind::kPlural) &&
               kind_ != static_cast<std::uint64_t>(EditKind::kSingular);
  }

  void Run() {
    AddGains();
    AddContext(change_);
    AddContext(words_);
    AddGovernors();
    AddWhole();
  }

 private:
  static std::uint64_t Join(std::uint64_t a, std::uint64_t b) { return HashPair(a, b); }

  void Add(std::uint64_t a, std::uint64_t b) {
    ++number_;
    constexpr std::uint64_t kMask = (std::uint64_t{1} << kRankerBits) - 1;
    features_.push_back(static_cast<std::uint32_t>((Join(Join(number_, a), b) >> 20U) & kMask));
  }

  std::uint64_t W(int i) const {
    return i < 0 ? 1 : i >= sentence_.Size() ? 2 : HashText(sentence_.Lower(i));
  }
  std::uint64_t T(int i) const {
    return i < 0 ? 1 : i >= sentence_.Size() ? 2 : 10 + static_cast<std::uint64_t>(sentence_.TagAt(i));
  }

  std::uint64_t OldWords() const {
    std::uint64_t hash = 5;
    for (int i = edit_.first; i <= edit_.last; ++i) hash = Join(hash, W(i));
    return hash;
  }
  std::uint64_t NewWords() const {
    std::uint64_t hash = 6;
    for (const std::string& word : edit_.words) hash = Join(hash, HashText(word));
    return hash;
  }

  std::uint64_t Ending(std::string_view word) const {
    return HashText(word.substr(word.size() - std::min<std::size_t>(2, word.size())));
  }

  // Open-class words count by what is done to them, so that one verb teaches about another.
  std::uint64_t ClassOfChange() const {
    const std::uint64_t tag = T(edit_.first);
    const auto forms = [&](const std::string& word) { return std::uint64_t{sentence_.Words().Forms(word)}; };
    switch (edit_.kind) {
      case EditKind::kAgreement:
      case EditKind::kTense:
      case EditKind::kVerbForm:
      case EditKind::kNounVerb:
        return Join(Join(tag, forms(sentence_.Lower(edit_.first))), forms(edit_.words[0]));
      case EditKind::kPlural:
      case EditKind::kSingular:
      case EditKind::kToInsert:
        return tag;
      case EditKind::kGerund:
      case EditKind::kInfinitive:
      case EditKind::kToDelete:
        return 7;
      case EditKind::kDerivation:
      case EditKind::kCompare:
        return Join(Join(tag, Ending(sentence_.Lower(edit_.first))), Ending(edit_.words[0]));
      default:
        return Join(OldWords(), NewWords());
    }
  }

  static std::uint64_t Bin(double value, double step, double limit) {
    return static_cast<std::uint64_t>(std::floor(std::clamp(value, -limit, limit) / step) + 100);
  }

  void AddGains() {
    const std::uint64_t mean = Bin(view_.gain.Mean(), 1, 14);
    const std::uint64_t word = Bin(view_.gain.word, 1.5, 15);
    const std::uint64_t group = Bin(view_.gain.group, 1.5, 15);
    Add(0, 0);
    Add(kind_, 0);
    Add(change_, 0);
    Add(words_, 0);
    Add(0, mean);
    Add(kind_, mean);
    Add(change_, mean);
    Add(kind_, Join(word, group));
    Add(change_, word);
    Add(change_, group);
    Add(kind_, Join(mean, Bin(view_.present.Mean(), 2, 20)));
    Add(words_, Bin(view_.gain.Mean(), 3, 15));
  }

  void AddContext(std::uint64_t what) {
    const int l = left_;
    const int r = right_;
    Add(what, W(l));
    Add(what, W(r));
    Add(what, T(l));
    Add(what, T(r));
    Add(what, Join(T(l), T(r)));
    Add(what, Join(W(l), W(r)));
    Add(what, Join(W(l - 1), W(l)));
    Add(what, Join(W(r), W(r + 1)));
    Add(what, Join(T(l - 1), T(l)));
    Add(what, Join(T(r), T(r + 1)));
    Add(what, Join(W(l), T(r)));
    Add(what, Join(T(l), W(r)));
    Add(what, Join(Join(T(l - 1), T(l)), Join(T(r), T(r + 1))));
    Add(what, Join(Join(T(l - 2), T(l - 1)), T(l)));
    Add(what, Join(Join(T(r), T(r + 1)), T(r + 2)));
  }

  // The nearest noun or pronoun to the left that no preposition governs: mostly the subject.
  int FindSubject() const {
    for (int i = edit_.first - 1; i >= 0 && i > edit_.first - 10; --i) {
      const Tag tag = sentence_.TagAt(i);
      const bool nominal =
          tag == Tag::PRP || IsNoun(tag) || tag == Tag::EX || tag == Tag::WDT || tag == Tag::WP;
      if (nominal && !IsGoverned(i)) return i;
    }
    return kNone;
  }
  bool IsGoverned(int noun) const {
    for (int i = noun - 1; i >= 0 && i > noun - 5; --i) {
      const Tag tag = sentence_.TagAt(i);
      if (tag == Tag::IN) return true;
      if (tag != Tag::DT && !IsAdjective(tag) && !IsNoun(tag) && tag != Tag::PRPS) return false;
    }
    return false;
  }
  int FindVerbBefore() const {
    for (int i = edit_.first - 1; i >= 0 && i > edit_.first - 5; --i) {
      const Tag tag = sentence_.TagAt(i);
      if (IsVerb(tag) || tag == Tag::MD || tag == Tag::TO) return i;
    }
    return kNone;
  }
  int FindHeadAfter() const {
    for (int i = right_; i < sentence_.Size() && i < right_ + 6; ++i) {
      const Tag tag = sentence_.TagAt(i);
      if (IsNoun(tag)) {
        while (IsNoun(sentence_.TagAt(i + 1))) ++i;
        return i;
      }
      const bool modifier = IsAdjective(tag) || tag == Tag::RB || tag == Tag::DT || tag == Tag::CD ||
                            tag == Tag::PRPS || tag == Tag::VBN || tag == Tag::VBG;
      if (!modifier) break;
    }
    return kNone;
  }
  int FindDeterminerBefore() const {
    for (int i = edit_.first - 1; i >= 0 && i > edit_.first - 6; --i) {
      const Tag tag = sentence_.TagAt(i);
      if (tag == Tag::DT || tag == Tag::CD || tag == Tag::PRPS || tag == Tag::PDT ||
          sentence_.Is(i, {"many", "few", "several", "other", "much", "such", "more", "most", "various"}))
        return i;
      if (IsVerb(tag) || tag == Tag::IN || tag == Tag::Comma) break;
    }
    return kNone;
  }

  void AddGovernors() {
    const auto word = [&](int i) { return i == kNone ? 3 : W(i); };
    const auto tag = [&](int i) { return i == kNone ? 3 : T(i); };
    const int subject = FindSubject();
    const int verb = FindVerbBefore();
    const int head = FindHeadAfter();
    const int determiner = FindDeterminerBefore();
    const auto near = [&](int i) { return std::uint64_t{i == left_}; };
    Add(change_, Join(word(subject), near(subject)));
    Add(change_, Join(tag(subject), near(subject)));
    Add(words_, tag(subject));
    Add(change_, Join(tag(subject), word(verb)));
    Add(change_, Join(word(verb), static_cast<std::uint64_t>(edit_.first - verb)));
    Add(words_, word(verb));
    Add(change_, Join(word(head), static_cast<std::uint64_t>(head - right_)));
    Add(change_, tag(head));
    Add(change_, Join(word(head), W(left_)));
    Add(change_, Join(word(head), word(determiner)));
    Add(words_, word(head));
    Add(change_, word(determiner));
    Add(change_, Join(word(determiner), T(right_)));
    if (isWordy_)
      Add(words_, word(determiner));
    else
      Add(words_, Join(word(determiner), T(right_)));
  }

  // Which tenses the rest of the sentence has, and where in it the edit is.
  void AddWhole() {
    std::uint64_t tenses = 0;
    int finite = 0;
    for (int i = 0; i < sentence_.Size(); ++i) {
      if (i >= edit_.first && i <= edit_.last) continue;
      const Tag tag = sentence_.TagAt(i);
      if (tag == Tag::VBD) tenses |= 1U;
      if (tag == Tag::VBZ || tag == Tag::VBP) tenses |= 2U;
      if (tag == Tag::MD) tenses |= 4U;
      finite += IsFiniteVerb(tag) ? 1 : 0;
    }
    Add(change_, tenses);
    Add(change_, std::uint64_t(std::min(finite, 3)));
    Add(change_, std::uint64_t{edit_.first == 0});
    Add(change_, edit_.first < 2 ? W(right_) : 3);
    Add(change_, W(sentence_.Size() - 1));
  }

  const Sentence& sentence_;
  const Edit& edit_;
  const NgramView& view_;
  std::vector<std::uint32_t>& features_;
  int left_ = 0;
  int right_ = 0;
  std::uint64_t kind_ = 0;
  std::uint64_t change_ = 0;
  std::uint64_t words_ = 0;
  bool isWordy_ = true;
  std::uint64_t number_ = 0;
};

}  // namespace

void FeaturesOf(const Sentence& sentence, const Edit& edit, const NgramView& view,
                std::vector<std::uint32_t>& features) {
  features.clear();
  Extractor(sentence, edit, view, features).Run();
}

}  // namespace tolvex
