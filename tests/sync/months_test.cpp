// A month of two to four computers and one real server, drawn at random: whatever fails, no sentence is lost,
// and none is there twice.
#include <fmt/format.h>

#include <array>
#include <cstdlib>
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
  int kills = 0;     // of the program
  int crashes = 0;   // of the server
  int restores = 0;  // from an older copy
  int moves = 0;     // to another server
  int logins = 0;    // of another learner at the same computer
  int stamps = 0;    // lost or damaged
  int copies = 0;    // older ones of a computer's own records, put back
  int twins = 0;     // second processes
  int merges = 0;
  int checked = 0;  // sentences and essays that were compared in the end
  int lost = 0;
};

/// One synchronisation in so many meets a server that dies after it has stored what it got.
constexpr unsigned kCrashes = 200;

/// What a learner has done, on whichever computer.
struct Learner {
  std::string account;
  std::multiset<std::string> accepted, deleted;
  std::map<std::string, std::string> finished;  // texts of the essays, by their ids
  std::string last;                             // sentence
};

class Month {
 public:
  Month(School& school, unsigned seed, Tally& tally) : school_(school), random_(seed), tally_(tally) {
    learners_[0].account = fmt::format("1000{:06}", seed);
    learners_[1].account = fmt::format("2000{:06}", seed);
    oldAccount_ = fmt::format("old.{}", seed);
    for (const auto& account : Accounts()) school.AddAccount(account);
    computers_.resize(2 + Draw(3));
    networks_.resize(computers_.size());
    for (std::size_t i = 0; i < computers_.size(); ++i) Set(i);
    AddOldRecords();
  }

  void Live() {
    constexpr int kSteps = 40;
    for (int step = 0; step < kSteps; ++step) {
      for (auto& computer : computers_) computer->machine.loop.Advance(std::chrono::hours{18});
      if (Draw(20) == 0) ChangeServer();
      Act(*computers_[Draw(static_cast<unsigned>(computers_.size()))]);
    }
    weather_ = Weather::kFine;
    for (auto& learner : learners_) Finish(learner);
    for (const auto& learner : learners_) Compare(learner);
  }

 private:
  unsigned Draw(unsigned below) { return static_cast<unsigned>(random_() % below); }
  std::vector<std::string> Accounts() const {
    return {learners_[0].account, learners_[1].account, oldAccount_};
  }
  Learner& Of(const Computer& computer) {
    return computer.Account() == learners_[0].account ? learners_[0] : learners_[1];
  }

  void Set(std::size_t i) {
    computers_[i] = std::make_unique<Computer>(
        [this, i](const base::HttpRequest& request) { return Answer(i, request); }, learners_[0].account);
    computers_[i]->LogIn(learners_[0].account);
    auto& loop = computers_[i]->machine.loop;
    networks_[i] = std::make_unique<Network>(school_, loop);
    // No two clocks agree to the second.
    loop.Advance(std::chrono::seconds{37} * static_cast<int>(i));
  }

  /// While a request is under way, another process may do all of its own.
  base::HttpResponse Answer(std::size_t i, const base::HttpRequest& request) {
    if (hasTwin_ && Draw(4) == 0) {
      hasTwin_ = false;
      ++tally_.twins;
      computers_[i]->SyncInAnotherProcess(
          [this, i](const base::HttpRequest& other) { return networks_[i]->Send(other); });
    }
    return networks_[i]->Send(request, NextWeather());
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

  void ChangeServer() {
    if (hasBackup_) {
      school_.Restore();
      hasBackup_ = false;
      ++tally_.restores;
    } else if (Draw(4) == 0) {
      school_.StartAnew(Accounts());
      AddOldRecords();
      ++tally_.moves;
    } else {
      school_.BackUp();
      hasBackup_ = true;
    }
  }

  void Act(Computer& computer) {
    const unsigned what = Draw(14);
    if (what < 3) return Check(computer);
    if (what == 3) return Write(computer);
    if (what < 6) return Delete(computer);
    if (what == 6) return SetBack(computer);
    if (what == 7 && &computer == computers_[0].get()) return LogIn(computer);
    if (what == 8) return LoseStamp(computer);
    if (what == 9) return KeepOrPutBack(computer);
    Synchronise(computer);
  }

  void LoseStamp(Computer& computer) {
    computer.Die();
    computer.LoseStamp(Draw(2) == 0 ? "" : "\x01garbage");
    computer.Start();
    ++tally_.stamps;
  }

  /// A learner restores the records of a computer from a copy of his own. What no server has would be gone by
  /// his own doing, so he synchronises before, and gets it back after: a server that is restored too
  /// in between would have nothing of it either.
  void KeepOrPutBack(Computer& computer) {
    const std::string name = computer.recordsPath.string() + ".copy";
    if (!std::filesystem::exists(name)) return computer.Records().Db().Run("vacuum into ?", {name});
    weather_ = Weather::kFine;
    computer.CloseMessages();
    EXPECT_TRUE(computer.Sync("NOMSG"));
    computer.machine.windows.onShown = {};
    computer.Die();
    const bool isSent = computer.HasNothingUnsent();
    if (isSent) computer.PutBack(name);
    computer.Start();
    if (!isSent) return;
    ++tally_.copies;
    EXPECT_TRUE(computer.Sync("NOMSG"));
  }

  void SetBack(Computer& computer) {
    computer.machine.loop.SetClock(computer.machine.loop.Now() - std::chrono::hours{Draw(48)});
  }

  /// Two learners share the first computer.
  void LogIn(Computer& computer) {
    const bool isFirst = &Of(computer) == &learners_[0];
    computer.LogIn(learners_[isFirst ? 1 : 0].account);
    ++tally_.logins;
  }

  void Check(Computer& computer) {
    Learner& learner = Of(computer);
    const unsigned count = 1 + Draw(4);
    for (unsigned i = 0; i < count; ++i) {
      // One in six says what was said before, at this computer or another.
      if (learner.last.empty() || Draw(6) != 0)
        learner.last = fmt::format("Sentence {} isn't # {} 中文.", ++number_, Draw(1000));
      const auto before = computer.Contents();
      if (Draw(3) == 0) {
        computer.AddErr(learner.last + " *is*", "AG01");
      } else {
        computer.AddOk(learner.last);
      }
      std::multiset<std::string> made;
      std::ranges::set_difference(computer.Contents(), before, std::inserter(made, made.end()));
      learner.accepted.insert(made.begin(), made.end());
    }
  }

  void Write(Computer& computer) {
    Learner& learner = Of(computer);
    const std::string id = computer.AddEssay(fmt::format("Essay {}.\r\nIt || has <@> lines.", ++number_));
    const std::string sentence = fmt::format("Essay {}.", number_);
    computer.AddOk(sentence, id);
    const auto rows = computer.Query(
        "select '', sentence, sDate, essayId, essaySId, haveHtm, '' from oksentence"
        " where essayId = '" +
        id + "'");
    learner.accepted.insert(rows.begin(), rows.end());
    learner.finished[id] = fmt::format("Finished {}.", number_);
    // Some are sent before they are finished.
    if (Draw(2) == 0) Synchronise(computer);
    if (computer.Query("select essayId from essay where essayId = '" + id + "'").empty()) {
      ADD_FAILURE() << "the essay that was just written is not there";
      return;
    }
    EssayRecords(computer.Records()).FinishEssay(id, learner.finished[id]);
  }

  void Delete(Computer& computer) {
    const auto rows = computer.Query(
        "select sId, '', sentence, sDate, essayId, essaySId, haveHtm, '' from oksentence "
        "where upload <> 'D'");
    if (rows.empty()) return;
    const std::string row = rows[Draw(static_cast<unsigned>(rows.size()))];
    DayRecords(computer.Records()).DeleteSentences({row.substr(0, row.find('|'))});
    Of(computer).deleted.insert(row.substr(row.find('|') + 1));
  }

  /// As the window does that asks for it.
  void ProveOldAccount(Computer& computer) {
    computer.App().gAccountPassword = SyncServer::kOldPassword;
    EXPECT_THAT(CheckAccountPassword(computer.running->program, oldAccount_, SyncServer::kOldPassword),
                ::testing::StartsWith("OK"));
  }

  void Synchronise(Computer& computer) {
    const bool isMerge = &Of(computer) == &learners_[0] && Draw(12) == 0;
    if (isMerge) ProveOldAccount(computer);
    weather_ = Draw(2) == 0 ? Weather::kFine : static_cast<Weather>(1 + Draw(7));
    if (Draw(kCrashes) == 0) weather_ = Weather::kServerCrash;
    hasTwin_ = Draw(8) == 0;
    const unsigned kind = Draw(8);
    if (kind == 0) computer.machine.databases.fault.KillAt(static_cast<int>(1 + Draw(60)));
    if (kind == 1) computer.machine.files.fault.KillAt(static_cast<int>(1 + Draw(12)));
    if (kind == 2) computer.machine.http.fault.KillAt(static_cast<int>(1 + Draw(8)));
    const char* const mode = isMerge ? "" : Draw(3) == 0 ? "UPLOAD" : "NOMSG";
    computer.CloseMessages();
    if (!computer.Sync(mode, isMerge ? oldAccount_ : "")) ++tally_.kills;
    weather_ = Weather::kFine;
    hasTwin_ = false;
    computer.machine.windows.onShown = {};
    computer.Die();
    computer.machine.http.requests.clear();
    computer.machine.databases.statements.clear();
    computer.machine.loop.Advance(std::chrono::seconds{5});
    computer.Start();
  }

  /// The learner brings all of his computers into step.
  void Finish(const Learner& learner) {
    for (int round = 0; round < 3; ++round) {
      for (auto& computer : computers_) {
        if (computer.get() == computers_[0].get()) {
          if (computer->Account() != learner.account) computer->LogIn(learner.account);
        } else if (&learner != &learners_[0]) {
          continue;  // he has no other computer
        }
        EXPECT_TRUE(computer->Sync("NOMSG"));
      }
    }
    for (auto& computer : computers_) {
      if (computer->Account() != learner.account) continue;
      EXPECT_EQ(computer->Contents(), ServerContents(school_.Database(), learner.account));
      EXPECT_TRUE(computer->Query("select 1 from oksentence where upload <> 'Y'").empty());
    }
  }

  void Compare(const Learner& learner) {
    const auto onServer = ServerContents(school_.Database(), learner.account);
    for (auto row = learner.accepted.begin(); row != learner.accepted.end();
         row = learner.accepted.upper_bound(*row)) {
      CompareSentence(learner, *row, onServer.count(*row));
    }
    for (const auto& [id, text] : learner.finished) {
      ++tally_.checked;
      const auto rows =
          ServerRows(school_.Database(),
                     fmt::format("select new_essay from essay where essay_id = '{}' and account = '{}'", id,
                                 learner.account));
      const bool isThere = rows == std::vector<std::string>{text};
      if (!isThere) ++tally_.lost;
      EXPECT_TRUE(isThere) << id;
    }
    CompareMerged(learner, onServer);
  }

  /// Rows have ids: of equal ones each deletion takes the one that was chosen.
  void CompareSentence(const Learner& learner, const std::string& row, std::size_t there) {
    const std::size_t accepted = learner.accepted.count(row);
    const std::size_t deleted = learner.deleted.count(row);
    ++tally_.checked;
    // Two computers may each delete the same row before they hear of each other.
    const std::size_t least = accepted > deleted ? accepted - deleted : 0;
    const std::size_t most = deleted == 0 ? accepted : accepted - 1;
    if (there < least) ++tally_.lost;
    EXPECT_GE(there, least) << row << ": " << there << " of " << accepted << " less " << deleted;
    EXPECT_LE(there, most) << row << ": " << there << " of " << accepted << " less " << deleted;
  }

  void CompareMerged(const Learner& learner, const std::multiset<std::string>& onServer) {
    const std::string one = "|Old one.|2026-10-01|0|0|N|";
    const auto two = onServer.count("AG01|Old *twos*.|2026-10-02|0|0|N|");
    EXPECT_LE(two, 1U) << "merged twice";
    EXPECT_TRUE(onServer.count(one) == two || learner.deleted.contains(one));
    if (two == 1) ++tally_.merges;
  }

  School& school_;
  std::mt19937 random_;
  Tally& tally_;
  std::array<Learner, 2> learners_;
  std::string oldAccount_;
  std::vector<std::unique_ptr<Network>> networks_;
  std::vector<std::unique_ptr<Computer>> computers_;
  Weather weather_ = Weather::kFine;
  bool hasTwin_ = false;
  bool hasBackup_ = false;
  int number_ = 0;
};

/// Months per test; MAROVANE_MONTHS asks for more. There are several tests, so that they can run side by
/// side.
unsigned MonthsOfATest() {
  constexpr unsigned kMonths = 50;
  const char* const wanted = std::getenv("MAROVANE_MONTHS");
  return wanted == nullptr ? kMonths : static_cast<unsigned>(std::strtoul(wanted, nullptr, 10));
}

class Months : public ::testing::TestWithParam<unsigned> {};

TEST_P(Months, OfAnyKindLoseNoSentence) {
  Tally tally;
  const unsigned months = MonthsOfATest();
  for (unsigned i = 0; i < months && !HasFailure(); ++i) {
    const unsigned seed = GetParam() * months + i;
    SCOPED_TRACE(fmt::format("seed {}", seed));
    School school;
    Month(school, seed, tally).Live();
    ++tally.runs;
  }
  fmt::print(
      "runs {}, faults {}, kills {}, crashes {}, restores {}, moves {}, logins {}, second processes {}, "
      "stamps {}, copies {}, merges {}, compared {}, lost {}\n",
      tally.runs, tally.faults, tally.kills, tally.crashes, tally.restores, tally.moves, tally.logins,
      tally.twins, tally.stamps, tally.copies, tally.merges, tally.checked, tally.lost);
  EXPECT_EQ(tally.lost, 0);
  EXPECT_EQ(tally.runs, static_cast<int>(months));
  for (const int happened :
       {tally.kills, tally.crashes, tally.restores, tally.moves, tally.logins, tally.twins, tally.stamps,
        tally.copies, tally.merges, tally.faults - tally.runs}) {
    EXPECT_GT(happened, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Quarters, Months, ::testing::Range(0U, 4U));

}  // namespace

}  // namespace marovane
