#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "protocol/record_form.h"
#include "server/store/account_store.h"
#include "server/store/store_database.h"
#include "tests/server/temp_folder.h"

namespace server {
namespace {

TEST(AccountStore, KeepsTextsOfEveryKindOverARestart) {
  const TempFolder folder;
  const std::string odd = "'; DROP TABLE account; -- 國中\"%_";
  {
    const auto store = OpenAccountStore(folder / "server.db");
    store->PutUserSettings("1", odd);
    EXPECT_EQ(store->UserSettings("1"), "") << "an unknown account keeps nothing";
    store->PutAccount("1", odd);
    store->PutUserSettings("1", odd);
  }
  const auto store = OpenAccountStore(folder / "server.db");
  EXPECT_EQ(store->PasswordHash("1"), odd);
  EXPECT_EQ(store->UserSettings("1"), odd);
  EXPECT_EQ(store->PasswordHash("2"), std::nullopt);
}

TEST(AccountStore, CountsActsFromManyThreads) {
  const TempFolder folder;
  const auto store = OpenAccountStore(folder / "server.db");
  store->PutAccount("1", "x");
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
  OpenAccountStore(folder / "server.db")->PutAccount("1", "x");
  const auto database = OpenStoreDatabase(folder / "server.db");
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
  database->Run("PRAGMA user_version = 5");
  OpenAccountStore(folder / "server.db");
  std::vector<std::string> wanted;
  for (const auto& [old, cleaned] : ids) wanted.push_back(cleaned + "|" + cleaned + "|N|<");
  for (const char* columns :
       {"essay_id || '|' || essay_s_id || '|' || have_htm || '|' || sentence FROM sentence",
        "essay_id || '|' || work_id || '|' || final_set || '|' || quiz FROM essay"}) {
    EXPECT_EQ(database->Column(std::string("SELECT ") + columns + " ORDER BY id"), wanted);
  }
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

}  // namespace
}  // namespace server
