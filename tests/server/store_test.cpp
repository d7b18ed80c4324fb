#include "server/store.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "server/store_database.h"
#include "tests/server/temp_folder.h"

namespace marovane {
namespace {

TEST(Store, KeepsTextsOfEveryKindOverARestart) {
  const TempFolder folder;
  const std::string odd = "'; DROP TABLE account; -- 國中\"%_";
  {
    const auto store = OpenSqliteStore(folder / "server.db");
    store->PutUserSettings("1", odd);
    EXPECT_EQ(store->UserSettings("1"), "") << "an unknown account keeps nothing";
    store->PutAccount("1", odd);
    store->PutUserSettings("1", odd);
  }
  const auto store = OpenSqliteStore(folder / "server.db");
  EXPECT_EQ(store->PasswordHash("1"), odd);
  EXPECT_EQ(store->UserSettings("1"), odd);
  EXPECT_EQ(store->PasswordHash("2"), std::nullopt);
}

TEST(Store, CountsActsFromManyThreads) {
  const TempFolder folder;
  const auto store = OpenSqliteStore(folder / "server.db");
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

TEST(Store, RefusesWhatItCannotRead) {
  const TempFolder folder;
  WriteFile(folder / "rubbish.db", std::string(5000, 'x'));
  EXPECT_THROW(OpenSqliteStore(folder / "rubbish.db"), std::runtime_error);
  EXPECT_EQ(ReadFile(folder / "rubbish.db"), std::string(5000, 'x'));
  OpenStoreDatabase(folder / "newer.db")->Run("PRAGMA user_version = 999");
  EXPECT_THROW(OpenSqliteStore(folder / "newer.db"), std::runtime_error);
  EXPECT_THROW(OpenSqliteStore(folder / "missing/server.db"), std::runtime_error);
}

}  // namespace
}  // namespace marovane
