#include "tests/support/realistic_records.h"

#include <fmt/format.h>

#include <array>
#include <random>
#include <string>

#include "base/day.h"

namespace marovane {

namespace {

using std::chrono::sys_days;

constexpr std::array kSubjects{"My brother",   "The teacher",  "She",
                               "Our neighbor", "The tall man", "My friend’s mother"};
constexpr std::array kEndings{"every day.",          "in the morning.", "with his friends because it is fun.",
                              "after school.",       "at home.",        "before the rain starts.",
                              "on Sunday afternoon."};
constexpr std::array kRightVerbs{"reads a book",         "goes to the market",     "has finished the work",
                                 "is waiting for a bus", "wants to learn English", "doesn’t like coffee"};

struct Mistake {
  const char* errcode;
  const char* verb;
  int weight;
};
constexpr std::array<Mistake, 12> kMistakes{{{"AG01", "*go* to the market", 24},
                                             {"AR01", "eats *a apple*", 18},
                                             {"VF06", "wants *learn* English", 14},
                                             {"TN01", "yesterday *goes* to school", 11},
                                             {"PR01", "listens *music*", 9},
                                             {"NU01", "has many *book*", 8},
                                             {"VF01", "can *sings* well", 6},
                                             {"SP01", "likes *choclate*", 5},
                                             {"CN01", "is tired *but* works although it is late", 4},
                                             {"WO01", "*very likes* coffee", 3},
                                             {"AG99", "*have* a bicycle", 2},
                                             {"0", "*is* do homework", 2}}};

class Filler {
 public:
  Filler(base::Database& db, const RealisticRecords& wish) : db_(db), wish_(wish), random_(wish.seed) {}

  void Fill() {
    db_.Run("begin");
    for (int i = 0; i < wish_.sentences; ++i) Insert(i);
    for (int essay = 0; essay < essays_; ++essay) InsertEssay(essay);
    db_.Run("commit");
  }

 private:
  int Draw(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  template <class List>
  const auto& Pick(const List& list) {
    return list[static_cast<std::size_t>(Draw(static_cast<int>(list.size())))];
  }

  const Mistake& PickMistake() {
    int sum = 0;
    for (const auto& mistake : kMistakes) sum += mistake.weight;
    int drawn = Draw(sum);
    const Mistake* picked = kMistakes.begin();
    while (drawn >= picked->weight) drawn -= picked++->weight;
    return *picked;
  }

  // In order of days, as records come about. One day in nine is a day off.
  std::string DayOf(int index) const {
    constexpr int kOff = 9;
    int day = static_cast<int>(static_cast<std::int64_t>(index) * wish_.days / wish_.sentences);
    if (day % kOff == 3) ++day;
    const base::Day date = sys_days{wish_.lastDay} - std::chrono::days{wish_.days - 1 - day};
    return base::IsoDay(date);
  }

  std::string Flag(int index) {
    const bool isNew = index > wish_.sentences * 9 / 10;
    return Draw(25) == 0 ? "D" : isNew ? "N" : "Y";
  }

  std::string EssayOf(int index) {
    constexpr int kPerEssay = 100;
    if (index % 10 != 5) return Draw(5) == 0 ? "" : "0";
    essays_ = index / kPerEssay + 1;
    return EssayId(index / kPerEssay);
  }

  static std::string EssayId(int essay) { return fmt::format("6500{:05}00001", essay); }

  void Insert(int index) {
    const std::string id = fmt::format("6{:08}{:05}", index, index % 1000);
    const std::string essayId = EssayOf(index);
    const std::string essaySId = essayId.size() > 1 ? id : "0";
    const std::string flag = Flag(index);
    if (Draw(3) != 0) {
      db_.Run("insert into oksentence values (?, 'N', ?, ?, ?, ?, ?, 'N')",
              {id, fmt::format("{} {} {}", Pick(kSubjects), Pick(kRightVerbs), Pick(kEndings)), DayOf(index),
               flag, essayId, essaySId});
      return;
    }
    const Mistake& mistake = PickMistake();
    db_.Run("insert into errsentence values (?, ?, ?, ?, ?, ?, ?, 'N')",
            {id, fmt::format("{} {} {}", Pick(kSubjects), mistake.verb, Pick(kEndings)), mistake.errcode,
             DayOf(index), flag, essayId, essaySId});
  }

  void InsertEssay(int essay) {
    constexpr std::array kFinal{"A", "N", "Y"};
    db_.Run("insert into essay values (?, ?, ?, ?, ?, ?, ?, ?)",
            {EssayId(essay), EssayId(essay), fmt::format("我的短文 {}", essay + 1), "He go to school.",
             "He goes to school.", "Y", Pick(kFinal), DayOf(essay * 100 % wish_.sentences)});
  }

  base::Database& db_;
  const RealisticRecords& wish_;
  std::mt19937 random_;
  int essays_ = 0;
};

}  // namespace

void FillRealistically(base::Database& db, const RealisticRecords& wish) { Filler(db, wish).Fill(); }

}  // namespace marovane
