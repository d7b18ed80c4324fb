#include "server/store/school_store.h"

#include <gmock/gmock.h>

#include <functional>

#include "server/store/account_store.h"
#include "server/store/store_database.h"
#include "tests/server/temp_folder.h"

namespace server {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

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
  }

  TempFolder folder_;
  std::unique_ptr<AccountStore> accounts_;
  std::unique_ptr<SchoolStore> store_;
  std::string class_;
};

// The pages ask first whether a class is the teacher's own; the store does not rely on that.
TEST_F(SchoolStoreTest, KeepsTeachersApart) {
  HandIn work;
  work.account = "S1";
  work.comment = "X";
  work.markedDay = "2026-11-06";
  const Topic changed{"w1", class_, "", "X", "X", "2026-12-24", "2026-11-06"};
  const std::function<bool(const std::string&)> writes[] = {
      [&](const auto& teacher) { return store_->RenameClass(teacher, class_, "X"); },
      [&](const auto& teacher) {
        return store_->AddPupils(teacher, class_, {{"S2", "X"}});
      },
      [&](const auto& teacher) {
        return store_->AddTopic(teacher, {"w" + teacher, class_, "", "X", "", "2026-12-24", ""});
      },
      [&](const auto& teacher) { return store_->ChangeTopic(teacher, changed); },
      [&](const auto& teacher) { return store_->Mark(teacher, "w1", work); },
      [&](const auto& teacher) { return store_->RemovePupil(teacher, class_, "S1"); },
  };
  int number = 0;
  for (const auto& write : writes) {
    EXPECT_FALSE(write("wu")) << number;
    EXPECT_FALSE(write("nobody")) << number++;
  }
  EXPECT_EQ(store_->FindClass("lin", class_)->name, "A");
  EXPECT_THAT(store_->Pupils("lin", class_), SizeIs(1));
  EXPECT_THAT(store_->Topics("lin", class_), SizeIs(1));
  EXPECT_EQ(store_->FindTopic("lin", "w1")->title, "Title");
  EXPECT_EQ(store_->HandIns("lin", "w1")[0].comment, "");
  EXPECT_EQ(accounts_->PasswordHash("S2"), std::nullopt) << "no account was made either";

  EXPECT_THAT(store_->Classes("wu"), IsEmpty());
  EXPECT_THAT(store_->Pupils("wu", class_), IsEmpty());
  EXPECT_THAT(store_->Topics("wu", class_), IsEmpty());
  EXPECT_THAT(store_->HandIns("wu", "w1"), IsEmpty());
  EXPECT_FALSE(store_->FindClass("wu", class_));
  EXPECT_FALSE(store_->FindTopic("wu", "w1"));

  for (const auto& write : writes) EXPECT_TRUE(write("lin")) << "the owner may";
}

TEST_F(SchoolStoreTest, DeletesOnlyWhatIsEmptyAndOwn) {
  EXPECT_FALSE(store_->DeleteTopic("lin", "w1")) << "somebody has handed in";
  store_->AddTopic("lin", {"w2", class_, "", "Mistake", "", "2026-12-01", ""});
  const std::string empty = store_->AddClass("lin", "B");
  const std::string withPupil = store_->AddClass("lin", "C");
  const std::string withTopic = store_->AddClass("lin", "D");
  store_->AddPupils("lin", withPupil, {{"S1", "王"}});
  store_->AddTopic("lin", {"w3", withTopic, "", "Lone", "", "2026-12-01", ""});
  for (const char* other : {"wu", "nobody"}) {
    EXPECT_FALSE(store_->DeleteTopic(other, "w2")) << other;
    EXPECT_FALSE(store_->DeleteClass(other, empty)) << other;
  }
  for (const auto& kept : {class_, withPupil, withTopic}) EXPECT_FALSE(store_->DeleteClass("lin", kept));
  EXPECT_TRUE(store_->DeleteTopic("lin", "w2"));
  EXPECT_TRUE(store_->DeleteTopic("lin", "w3"));
  EXPECT_FALSE(store_->DeleteTopic("lin", "w3")) << "it is gone";
  EXPECT_TRUE(store_->DeleteClass("lin", empty));
  EXPECT_TRUE(store_->DeleteClass("lin", withTopic));
  EXPECT_THAT(store_->Classes("lin"), SizeIs(2));
  EXPECT_THAT(store_->Topics("lin", class_), SizeIs(1));
  EXPECT_THAT(store_->HandIns("lin", "w1"), SizeIs(1));
}

TEST_F(SchoolStoreTest, CountsWhatWaits) {
  const auto counts = [&] {
    const SchoolClass found = store_->Classes("lin")[0];
    const Topic topic = store_->Topics("lin", class_)[0];
    return std::vector{found.pupils, found.topics, found.unmarked, topic.handedIn, topic.unmarked};
  };
  EXPECT_EQ(counts(), (std::vector<std::size_t>{1, 1, 1, 1, 1}));
  HandIn work;
  work.account = "S1";
  work.markedDay = "2026-11-06";
  store_->Mark("lin", "w1", work);
  EXPECT_EQ(counts(), (std::vector<std::size_t>{1, 1, 0, 1, 0}));
}

TEST_F(SchoolStoreTest, AFailedImportLeavesNothing) {
  OpenStoreDatabase(folder_ / "server.db")
      ->RunScript(
          "CREATE TRIGGER stop BEFORE INSERT ON pupil WHEN new.account = 'S3'"
          " BEGIN SELECT RAISE(ABORT, 'disk full'); END");
  EXPECT_THROW(store_->AddPupils("lin", class_, {{"S2", "X"}, {"S3", "Y"}}), std::runtime_error);
  EXPECT_THAT(store_->Pupils("lin", class_), SizeIs(1));
  EXPECT_EQ(accounts_->PasswordHash("S2"), std::nullopt);
  EXPECT_TRUE(store_->AddPupils("lin", class_, {{"S4", "Z"}})) << "the next one works";
}

TEST_F(SchoolStoreTest, ATwinOfATopicCannotBeMade) {
  EXPECT_THROW(store_->AddTopic("lin", {"w1", class_, "", "X", "", "2026-12-24", ""}), std::runtime_error);
}

}  // namespace
}  // namespace server
