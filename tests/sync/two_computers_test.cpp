// A month of two computers and one real server, drawn at random: whatever fails, no sentence is lost.
#include <fmt/format.h>

#include <array>
#include <map>
#include <random>

#include "records/day_records.h"
#include "tests/sync/computer.h"
#include "tests/sync/school.h"

namespace marovane {

namespace {

struct Tally {
  int runs = 0;
  int faults = 0;
  int kills = 0;    // of the program
  int crashes = 0;  // of the server
  int merges = 0;
  int checked = 0;  // sentences and essays that were compared in the end
  int lost = 0;
};

/// One synchronisation in so many meets a server that dies after it has stored what it got.
constexpr unsigned kCrashes = 200;

class Month {
 public:
  Month(School& school, unsigned seed, Tally& tally) : school_(school), random_(seed), tally_(tally) {
    account_ = fmt::format("1000{:06}", seed);
    oldAccount_ = fmt::format("old.{}", seed);
    for (const auto& account : {account_, oldAccount_}) school.AddAccount(account);
    for (std::size_t i = 0; i < computers_.size(); ++i) Set(i);
    AddOldRecords();
  }

  void Live() {
    constexpr int kSteps = 40;
    for (int step = 0; step < kSteps; ++step) {
      for (auto& computer : computers_) computer->machine.loop.Advance(std::chrono::hours{18});
      Act(*computers_[Draw(2)]);
    }
    weather_ = Weather::kFine;
    for (const int i : {0, 1, 0, 1}) EXPECT_TRUE(computers_[static_cast<std::size_t>(i)]->Sync("NOMSG"));
    Compare();
  }

 private:
  unsigned Draw(unsigned below) { return static_cast<unsigned>(random_() % below); }

  void Set(std::size_t i) {
    computers_[i] = std::make_unique<Computer>(
        [this, i](const base::HttpRequest& request) { return networks_[i]->Send(request, NextWeather()); },
        account_);
    auto& loop = computers_[i]->machine.loop;
    networks_[i] = std::make_unique<Network>(school_, loop);
    // No two clocks agree to the second.
    loop.Advance(std::chrono::seconds{37} * static_cast<int>(i));
  }

  void AddOldRecords() {
    const auto post = PostOf(oldAccount_, oldAccount_,
                             "&k1=N&err1=&s1=Old+one.&d1=2026%2F10%2F1&es1=0&ess1=0&ht1=N"
                             "&k2=N&err2=AG01&s2=Old+*twos*.&d2=2026%2F10%2F2&es2=0&ess2=0&ht2=N");
    ASSERT_EQ(networks_[0]->Send(post).body, "OK_");
  }

  /// The weather of one request: it does not strike every one.
  Weather NextWeather() {
    if (weather_ == Weather::kFine || Draw(3) != 0) return Weather::kFine;
    ++tally_.faults;
    if (weather_ == Weather::kServerCrash) ++tally_.crashes;
    return weather_;
  }

  void Act(Computer& computer) {
    const unsigned what = Draw(10);
    if (what < 3) return Check(computer);
    if (what == 3) return Write(computer);
    if (what < 6) return Delete(computer);
    Synchronise(computer);
  }

  void Check(Computer& computer) {
    const unsigned count = 1 + Draw(4);
    for (unsigned i = 0; i < count; ++i) {
      // One in six says what was said before, at this computer or the other.
      if (last_.empty() || Draw(6) != 0)
        last_ = fmt::format("Sentence {} isn't # {} 中文.", ++number_, Draw(1000));
      if (Draw(3) == 0) {
        computer.AddErr(last_ + " *is*", "AG01");
      } else {
        computer.AddOk(last_);
      }
      accepted_.insert(Newest(computer));
    }
  }

  /// Contents of the row that was made last: the one that is new among all.
  std::string Newest(Computer& computer) {
    const auto rows = computer.Query(
        "select * from (select sId as k, '', sentence, sDate, essayId, essaySId, haveHtm, '' from oksentence"
        " union all select id, errcode, sentence, sDate, essayId, essaySId, haveHtm, '' from errsentence)"
        " order by k desc limit 1");
    return rows[0].substr(rows[0].find('|') + 1);
  }

  void Write(Computer& computer) {
    const std::string id = computer.AddEssay(fmt::format("Essay {}.\r\nIt || has <@> lines.", ++number_));
    computer.AddOk(fmt::format("Essay {}.", number_), id);
    accepted_.insert(Newest(computer));
    finished_[id] = fmt::format("Finished {}.", number_);
    // Some are sent before they are finished.
    if (Draw(2) == 0) Synchronise(computer);
    if (computer.Query("select essayId from essay where essayId = '" + id + "'").empty()) {
      ADD_FAILURE() << "the essay that was just written is not there";
      return;
    }
    EssayRecords(computer.Records()).FinishEssay(id, finished_[id]);
  }

  void Delete(Computer& computer) {
    const auto rows = computer.Query(
        "select sId, '', sentence, sDate, essayId, essaySId, haveHtm, '' from oksentence "
        "where upload <> 'D'");
    if (rows.empty()) return;
    const std::string row = rows[Draw(static_cast<unsigned>(rows.size()))];
    DayRecords(computer.Records()).DeleteSentences({row.substr(0, row.find('|'))});
    deleted_.insert(row.substr(row.find('|') + 1));
  }

  void Synchronise(Computer& computer) {
    weather_ = Draw(2) == 0 ? Weather::kFine : static_cast<Weather>(1 + Draw(5));
    if (Draw(kCrashes) == 0) weather_ = Weather::kServerCrash;
    const unsigned kind = Draw(8);
    if (kind == 0) computer.machine.databases.fault.KillAt(static_cast<int>(1 + Draw(60)));
    if (kind == 1) computer.machine.files.fault.KillAt(static_cast<int>(1 + Draw(12)));
    if (kind == 2) computer.machine.http.fault.KillAt(static_cast<int>(1 + Draw(8)));
    const bool isMerge = Draw(12) == 0;
    const char* const mode = isMerge ? "" : Draw(3) == 0 ? "UPLOAD" : "NOMSG";
    computer.CloseMessages();
    if (!computer.Sync(mode, isMerge ? oldAccount_ : "")) ++tally_.kills;
    weather_ = Weather::kFine;
    computer.machine.windows.onShown = {};
    computer.Die();
    computer.machine.http.requests.clear();
    computer.machine.databases.statements.clear();
    computer.machine.loop.Advance(std::chrono::seconds{5});
    computer.Start();
  }

  void Compare() {
    const auto onServer = ServerContents(school_.Database(), account_);
    for (auto& computer : computers_) {
      EXPECT_EQ(computer->Contents(), onServer);
      EXPECT_TRUE(computer->Query("select 1 from oksentence where upload <> 'Y'").empty());
    }
    for (auto row = accepted_.begin(); row != accepted_.end(); row = accepted_.upper_bound(*row)) {
      CompareSentence(*row, onServer.count(*row));
    }
    for (const auto& [id, text] : finished_) {
      ++tally_.checked;
      const auto rows = ServerRows(
          school_.Database(),
          fmt::format("select new_essay from essay where essay_id = '{}' and account = '{}'", id, account_));
      const bool isThere = rows == std::vector<std::string>{text};
      if (!isThere) ++tally_.lost;
      EXPECT_TRUE(isThere) << id;
    }
    CompareMerged(onServer);
  }

  /// Computers may each delete the one of several equal sentences, which is then the same one or two: the
  /// sentence itself must stay as long as there were more of it than deletions.
  void CompareSentence(const std::string& row, std::size_t there) {
    const std::size_t accepted = accepted_.count(row);
    const std::size_t deleted = deleted_.count(row);
    ++tally_.checked;
    const bool isLost = deleted == 0 ? there != accepted : accepted > deleted && there == 0;
    const bool isBack = accepted == 1 && deleted > 0 && there > 0;
    if (isLost) ++tally_.lost;
    EXPECT_FALSE(isLost) << row << ": " << there << " of " << accepted << " less " << deleted;
    EXPECT_FALSE(isBack) << row << " came back";
  }

  void CompareMerged(const std::multiset<std::string>& onServer) {
    const auto one = onServer.count("|Old one.|2026-10-01|0|0|N|");
    const auto two = onServer.count("AG01|Old *twos*.|2026-10-02|0|0|N|");
    const bool isDeleted = deleted_.contains("|Old one.|2026-10-01|0|0|N|");
    EXPECT_LE(two, 1U) << "merged twice";
    EXPECT_TRUE(one == two || isDeleted);
    if (two == 1) ++tally_.merges;
  }

  School& school_;
  std::mt19937 random_;
  Tally& tally_;
  std::string account_, oldAccount_;
  std::array<std::unique_ptr<Network>, 2> networks_;
  std::array<std::unique_ptr<Computer>, 2> computers_;
  Weather weather_ = Weather::kFine;
  int number_ = 0;
  std::string last_;
  std::multiset<std::string> accepted_, deleted_;
  std::map<std::string, std::string> finished_;  // texts of the essays, by their ids
};

/// Months per test. There are several tests, so that they can run side by side.
constexpr unsigned kMonths = 75;

class TwoComputers : public ::testing::TestWithParam<unsigned> {};

TEST_P(TwoComputers, LoseNoSentenceInAnyMonth) {
  Tally tally;
  School school;
  for (unsigned i = 0; i < kMonths && !HasFailure(); ++i) {
    const unsigned seed = GetParam() * kMonths + i;
    SCOPED_TRACE(fmt::format("seed {}", seed));
    Month(school, seed, tally).Live();
    ++tally.runs;
  }
  fmt::print("runs {}, faults {}, kills {}, crashes of the server {}, merges {}, compared {}, lost {}\n",
             tally.runs, tally.faults, tally.kills, tally.crashes, tally.merges, tally.checked, tally.lost);
  EXPECT_EQ(tally.lost, 0);
  EXPECT_EQ(tally.runs, static_cast<int>(kMonths));
  EXPECT_GT(tally.faults, tally.runs);
  EXPECT_GT(tally.kills, 0);
  EXPECT_GT(tally.crashes, 0);
  EXPECT_GT(tally.merges, 0);
}

INSTANTIATE_TEST_SUITE_P(Quarters, TwoComputers, ::testing::Range(0U, 4U));

}  // namespace

}  // namespace marovane
