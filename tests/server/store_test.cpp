#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <functional>
#include <thread>
#include <vector>

#include "protocol/record_form.h"
#include "protocol/unique_id.h"
#include "server/store/account_store.h"
#include "server/store/record_store.h"
#include "server/store/schema_steps.h"
#include "server/store/school_store.h"
#include "server/store/store_database.h"
#include "tests/support/temp_folder.h"

namespace server {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST(AccountStore, KeepsTextsOfEveryKindAndCountsActsFromManyThreads) {
  const TempFolder folder;
  const std::string odd = "'; DROP TABLE account; -- 國中\"%_";
  OpenAccountStore(folder / "server.db")->PutAccount("1", odd);
  const auto store = OpenAccountStore(folder / "server.db");
  store->PutUserSettings("1", odd);
  EXPECT_EQ(store->PasswordHash("1"), odd);
  EXPECT_EQ(store->UserSettings("1"), odd);
  std::vector<std::thread> threads;
  threads.reserve(8);
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int j = 0; j < 25; ++j) store->CountAct("1", "2026-11-05", "collo");
    });
  }
  for (std::thread& thread : threads) thread.join();
  store->CountAct("1", "2026-11-06", "collo");
  EXPECT_THROW(store->CountAct("2", "2026-11-05", "collo"), std::runtime_error);
  const auto database = OpenStoreDatabase(folder / "server.db");
  EXPECT_EQ(database->Number("SELECT times FROM act WHERE day = '2026-11-05'"), 200);
  EXPECT_EQ(database->Number("SELECT count(*) FROM act"), 2);
}

/// A database as a version with so many steps left it, with the account "1".
std::unique_ptr<base::Database> OlderDatabase(const std::filesystem::path& file, std::size_t steps) {
  auto database = OpenStoreDatabase(file);
  for (std::size_t i = 0; i < steps; ++i) database->RunScript(kSchemaSteps[i]);
  database->Run("PRAGMA user_version = " + std::to_string(steps));
  database->Run("INSERT INTO account (number, password_hash) VALUES ('1', 'x')");
  return database;
}

// What stood in ids and flags before posts were tested, and what is left of it.
TEST(AccountStore, CleansTheIdsOfOlderRows) {
  const std::pair<std::string, std::string> ids[] = {{"1", "1"},
                                                     {"", ""},
                                                     {"w0b-5_1.f", "w0b-5_1.f"},
                                                     {"1'); alert(1); ('", "1alert1"},
                                                     {"中<b>文", "b"},
                                                     {std::string(70, '7'), std::string(64, '7')},
                                                     {std::string(1 << 20, '<') + "1", ""},
                                                     {std::string("9\0<b>", 5), "9"}};
  const TempFolder folder;
  const auto database = OlderDatabase(folder / "server.db", 5);
  for (const auto& [old, cleaned] : ids) {
    EXPECT_EQ(protocol::CleanRecordId(old), cleaned);
    database->Run(
        "INSERT INTO sentence (account, errcode, sentence, day, essay_id, essay_s_id, have_htm) VALUES ('1', "
        "'', '<', '', ?, ?, '<b>')",
        {old, old});
    database->Run(
        "INSERT INTO essay (account, day, essay_id, work_id, final_set, quiz, org_essay, new_essay) VALUES "
        "('1', '', ?, ?, '', '<', '<', '<')",
        {old, old});
  }
  OpenAccountStore(folder / "server.db");
  std::vector<std::string> wanted;
  for (const auto& [old, cleaned] : ids) wanted.push_back(cleaned + "|" + cleaned + "|N|<");
  for (const char* columns :
       {"essay_id || '|' || essay_s_id || '|' || have_htm || '|' || sentence FROM sentence",
        "essay_id || '|' || work_id || '|' || final_set || '|' || quiz FROM essay"}) {
    EXPECT_EQ(database->Column(std::string("SELECT ") + columns + " ORDER BY id"), wanted);
  }
}

TEST(AccountStore, GivesOlderRowsIdsInTheirOrderAndKeepsThePosts) {
  const TempFolder folder;
  const auto database = OlderDatabase(folder / "server.db", 6);
  database->Run("INSERT INTO account (number, password_hash) VALUES ('2', 'x'), ('3', 'x')");
  for (const char* const account : {"1", "1", "2"}) {
    database->Run(
        "INSERT INTO sentence (account, errcode, sentence, day, essay_id, essay_s_id, have_htm) VALUES (?, "
        "'', 'Equal.', '2026-11-05', '0', '0', 'N')",
        {account});
  }
  database->Run("INSERT INTO post VALUES ('1', 'a'), ('3', 'b')");
  OpenAccountStore(folder / "server.db");
  RecordStore records(folder / "server.db");
  const auto rows = records.Rows("1", protocol::RecordKind::kRight, "", 10);
  ASSERT_THAT(rows, testing::SizeIs(2));
  EXPECT_LT(rows[0].row.id, rows[1].row.id);
  for (const auto& row : rows) EXPECT_TRUE(protocol::IsUniqueId(row.row.id)) << row.row.id;
  EXPECT_EQ(records.State("1", {}).latestPost, "a");
  EXPECT_NE(records.State("2", {}).latestPost, "") << "it has rows, so something came before";
  EXPECT_EQ(records.State("3", {}).latestPost, "b");
  const std::string server = records.State("1", {}).server;
  EXPECT_EQ(RecordStore(folder / "server.db").State("1", {}).server, server);
  EXPECT_TRUE(records.State("1", {server, "a"}).knowsSeen);
  EXPECT_FALSE(records.State("1", {server, "b"}).knowsSeen) << "another account's";
  EXPECT_FALSE(records.State("1", {"another", "a"}).knowsSeen);
}

TEST(AccountStore, KeepsTheFiftyTokensThatWereUsedLast) {
  const TempFolder folder;
  const auto store = OpenAccountStore(folder / "server.db");
  store->PutAccount("1", "hash");
  store->PutAccount("2", "hash");
  EXPECT_FALSE(store->PutToken("1", "older hash", "x", "2026-11-01")) << "the password was changed meanwhile";
  EXPECT_FALSE(store->PutToken("3", "hash", "x", "2026-11-01"));
  EXPECT_TRUE(store->PutToken("2", "hash", "of 2", "2026-10-01"));
  for (int i = 1; i <= 50; ++i) store->PutToken("1", "hash", std::to_string(i), "2026-11-01");
  EXPECT_EQ(store->UseToken("1", "2026-11-03"), "1");
  // The clock was set back since: what is new stays all the same.
  EXPECT_TRUE(store->PutToken("1", "hash", "new", "2026-10-31"));
  for (const char* kept : {"1", "3", "50", "new"})
    EXPECT_EQ(store->UseToken(kept, "2026-11-04"), "1") << kept;
  EXPECT_EQ(store->UseToken("2", "2026-11-04"), std::nullopt);
  const auto tokens = store->Tokens("1");
  ASSERT_EQ(tokens.size(), 50U);
  EXPECT_EQ(tokens[0].madeDay + tokens[0].lastDay, "2026-11-012026-11-04");
  EXPECT_EQ(tokens[1].madeDay + tokens[1].lastDay, "2026-11-012026-11-04");
  EXPECT_EQ(tokens[2].lastDay, "2026-11-01");
  store->PutAccount("1", "another hash");
  EXPECT_EQ(store->Tokens("1").size(), 0U);
  EXPECT_EQ(store->UseToken("of 2", "2026-11-04"), "2");
  store->ForgetTokens("2");
  EXPECT_EQ(store->UseToken("of 2", "2026-11-04"), std::nullopt);
}

TEST(AccountStore, RefusesWhatItCannotRead) {
  const TempFolder folder;
  WriteFile(folder / "rubbish.db", std::string(5000, 'x'));
  EXPECT_THROW(OpenAccountStore(folder / "rubbish.db"), std::runtime_error);
  EXPECT_EQ(ReadFile(folder / "rubbish.db"), std::string(5000, 'x'));
  OpenStoreDatabase(folder / "newer.db")->Run("PRAGMA user_version = 999");
  EXPECT_THROW(OpenAccountStore(folder / "newer.db"), std::runtime_error);
  EXPECT_THROW(OpenAccountStore(folder / "missing/server.db"), std::runtime_error);
}

class RecordStoreTest : public testing::Test {
 protected:
  RecordStoreTest() {
    accounts_ = OpenAccountStore(folder_ / "server.db");
    for (const char* const number : {"1", "2"}) accounts_->PutAccount(number, "x");
    records_ = std::make_unique<RecordStore>(folder_ / "server.db");
  }
  static protocol::PostedRow Sentence(const std::string& id, bool isDeletion = false) {
    return {isDeletion, id, protocol::SentenceRow{"", "I am.", "2026-11-05", "0", "0", "N"}};
  }
  static protocol::PostedRow Essay(const std::string& state, const std::string& text) {
    return {false, "", protocol::EssayRow{"2026-11-05", kIds[0], "w1", state, "T", "First.", text}};
  }
  void Post(const std::string& account, const protocol::PostedRow& row) {
    records_->StorePost(account, "", {row});
  }
  std::vector<std::string> Ids(const std::string& account) {
    std::vector<std::string> ids;
    for (const auto& each : records_->Rows(account, protocol::RecordKind::kRight, "", 10)) {
      ids.push_back(each.row.id);
    }
    return ids;
  }

  static constexpr std::array kIds{"9065779560000000000000001", "9065779560000000000000002"};
  TempFolder folder_;
  std::unique_ptr<AccountStore> accounts_;
  std::unique_ptr<RecordStore> records_;
};

TEST_F(RecordStoreTest, StoresARowWithAnIdOnceAndADeletedOneNeverAgain) {
  for (int i = 0; i < 2; ++i) Post("1", Sentence(kIds[0]));
  Post("1", Sentence(kIds[1]));
  EXPECT_THAT(Ids("1"), ElementsAre(kIds[0], kIds[1])) << "equal sentences, different rows";
  Post("1", Sentence(kIds[0], true));
  Post("1", Sentence(kIds[0]));
  EXPECT_THAT(Ids("1"), ElementsAre(kIds[1]));
  Post("2", Sentence(kIds[0]));
  EXPECT_THAT(Ids("2"), ElementsAre(kIds[0])) << "accounts do not concern each other";
  const auto gone = records_->Gone("1", "", 10);
  ASSERT_THAT(gone, SizeIs(1));
  EXPECT_EQ(gone[0].id, kIds[0]);
}

TEST_F(RecordStoreTest, GivesRowsOfOlderProgramsIdsAndRemembersWhichItDeletes) {
  for (int i = 0; i < 3; ++i) Post("1", Sentence(""));
  const auto ids = Ids("1");
  ASSERT_THAT(ids, SizeIs(3));
  EXPECT_TRUE(std::ranges::is_sorted(ids));
  EXPECT_TRUE(std::ranges::all_of(ids, protocol::IsUniqueId));
  Post("1", Sentence("", true));
  EXPECT_THAT(Ids("1"), ElementsAre(ids[0], ids[1])) << "the newest";
  EXPECT_EQ(records_->Gone("1", "", 10).at(0).id, ids[2]);
}

TEST_F(RecordStoreTest, BringsNoEssayBackToAnEarlierState) {
  const std::pair<const char*, const char*> posts[] = {
      {"A", "First."}, {"N", "Finished."}, {"A", "First."}, {"Y", "Handed in."}, {"N", "Finished."}};
  std::vector<std::string> texts;
  for (const auto& [state, text] : posts) {
    Post("1", Essay(state, text));
    const auto rows = records_->Rows("1", protocol::RecordKind::kEssay, "", 10);
    ASSERT_THAT(rows, SizeIs(1));
    texts.push_back(std::get<protocol::EssayRow>(rows[0].row.row).newEssay);
  }
  EXPECT_THAT(texts, ElementsAre("First.", "Finished.", "Finished.", "Handed in.", "Handed in."));
}

TEST_F(RecordStoreTest, AMergeBringsNoRowThatWasDeletedOrIsThere) {
  for (const auto* const id : kIds) Post("2", Sentence(id));
  Post("1", Sentence(kIds[0]));
  Post("1", Sentence(kIds[1], true));
  records_->Merge("1", "2");
  EXPECT_THAT(Ids("1"), ElementsAre(kIds[0]));
  const std::string latest = records_->State("1", {}).latestPost;
  records_->Merge("1", "2");
  EXPECT_EQ(records_->State("1", {}).latestPost, latest) << "nothing has come";
}

class SchoolStoreTest : public testing::Test {
 protected:
  SchoolStoreTest() {
    accounts_ = OpenAccountStore(folder_ / "server.db");
    store_ = OpenSqliteSchoolStore(folder_ / "server.db");
    store_->PutTeacher({"lin", "Lin", "x"});
    store_->PutTeacher({"wu", "Wu", "x"});
    class_ = store_->AddClass("lin", "A");
    store_->AddPupils("lin", class_, {{"S1", "王"}});
    store_->AddTopic("lin", {"w1", class_, "", "Title", "Question", "2026-12-01", ""});
    OpenStoreDatabase(folder_ / "server.db")
        ->Run(
            "INSERT INTO essay (account, day, essay_id, work_id, final_set, quiz, org_essay, new_essay)"
            " VALUES ('S1', '2026-11-05', 'e1', 'w1', 'N', 'T', 'a', 'b')");
    store_->StoreHandIn("S1", "e1", "w1", "2026-11-05");
    work_.account = "S1";
    work_.comment = "X";
    work_.markedDay = "2026-11-06";
  }

  TempFolder folder_;
  std::unique_ptr<AccountStore> accounts_;
  std::unique_ptr<SchoolStore> store_;
  std::string class_;
  HandIn work_;
};

// The pages ask first whether a class is the teacher's own; the store does not rely on that.
TEST_F(SchoolStoreTest, KeepsTeachersApart) {
  const Topic changed{"w1", class_, "", "X", "X", "2026-12-24", "2026-11-06"};
  const std::string empty = store_->AddClass("lin", "B");
  store_->AddTopic("lin", {"w2", class_, "", "Mistake", "", "2026-12-01", ""});
  const std::function<bool(const std::string&)> writes[] = {
      [&](const auto& teacher) { return store_->DeleteClass(teacher, empty); },
      [&](const auto& teacher) { return store_->DeleteTopic(teacher, "w2"); },
      [&](const auto& teacher) { return store_->RenameClass(teacher, class_, "X"); },
      [&](const auto& teacher) {
        return store_->AddPupils(teacher, class_, {{"S2", "X"}});
      },
      [&](const auto& teacher) {
        return store_->AddTopic(teacher, {"w" + teacher, class_, "", "X", "", "2026-12-24", ""});
      },
      [&](const auto& teacher) { return store_->ChangeTopic(teacher, changed); },
      [&](const auto& teacher) { return store_->Mark(teacher, "w1", work_); },
      [&](const auto& teacher) { return store_->RemovePupil(teacher, class_, "S1"); },
  };
  int number = 0;
  for (const auto& write : writes) {
    EXPECT_FALSE(write("wu")) << number;
    EXPECT_FALSE(write("nobody")) << number++;
  }
  EXPECT_EQ(store_->FindClass("lin", class_)->name, "A");
  EXPECT_THAT(store_->Pupils("lin", class_), testing::SizeIs(1));
  EXPECT_THAT(store_->Topics("lin", class_), testing::SizeIs(2));
  EXPECT_THAT(store_->Classes("lin"), testing::SizeIs(2));
  EXPECT_EQ(store_->FindTopic("lin", "w1")->title, "Title");
  EXPECT_EQ(store_->HandIns("lin", "w1")[0].comment, "");
  EXPECT_EQ(accounts_->PasswordHash("S2"), std::nullopt) << "no account was made either";
  EXPECT_TRUE(store_->Classes("wu").empty() && store_->Pupils("wu", class_).empty() &&
              store_->Topics("wu", class_).empty() && store_->HandIns("wu", "w1").empty() &&
              !store_->FindClass("wu", class_) && !store_->FindTopic("wu", "w1"));

  for (const auto& write : writes) EXPECT_TRUE(write("lin")) << "the owner may";
  EXPECT_FALSE(store_->DeleteTopic("lin", "w2")) << "it is gone";
}

TEST_F(SchoolStoreTest, CountsWhatWaits) {
  const auto counts = [&] {
    const SchoolClass found = store_->Classes("lin")[0];
    const Topic topic = store_->Topics("lin", class_)[0];
    return std::vector{found.pupils, found.topics, found.unmarked, topic.handedIn, topic.unmarked};
  };
  EXPECT_EQ(counts(), (std::vector<std::size_t>{1, 1, 1, 1, 1}));
  store_->Mark("lin", "w1", work_);
  EXPECT_EQ(counts(), (std::vector<std::size_t>{1, 1, 0, 1, 0}));
}

TEST_F(SchoolStoreTest, AFailedImportLeavesNothing) {
  OpenStoreDatabase(folder_ / "server.db")
      ->RunScript(
          "CREATE TRIGGER stop BEFORE INSERT ON pupil WHEN new.account = 'S3'"
          " BEGIN SELECT RAISE(ABORT, 'disk full'); END");
  EXPECT_THROW(store_->AddPupils("lin", class_, {{"S2", "X"}, {"S3", "Y"}}), std::runtime_error);
  EXPECT_THAT(store_->Pupils("lin", class_), testing::SizeIs(1));
  EXPECT_EQ(accounts_->PasswordHash("S2"), std::nullopt);
  EXPECT_TRUE(store_->AddPupils("lin", class_, {{"S4", "Z"}})) << "the next one works";
  EXPECT_THROW(store_->AddTopic("lin", {"w1", class_, "", "X", "", "2026-12-24", ""}), std::runtime_error)
      << "a twin";
}

}  // namespace
}  // namespace server
