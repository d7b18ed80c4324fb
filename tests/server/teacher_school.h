// A server with two teachers, each with a class of their own, and an essay that was handed in to each.
#pragma once

#include <gmock/gmock.h>

#include "server/accounts/password.h"
#include "server/store/record_store.h"
#include "server/store/school_store.h"
#include "tests/server/teacher_client.h"

class TeacherSchool : public testing::Test {
 protected:
  static constexpr const char* kTopic = "w01";
  static constexpr const char* kOtherTopic = "w02";
  static constexpr const char* kPassword = "correct horse";

  explicit TeacherSchool(const std::string& settings = "")
      : server_(Scripted(JudgeFirstLetter), settings, [this] { return now_; }),
        store_(server::OpenSqliteSchoolStore(server_.Database())) {
    static const std::string kHash = server::HashPassword(kPassword);
    store_->PutTeacher({"lin", "林美玲", kHash});
    store_->PutTeacher({"wu", "吳大維", kHash});
    class_ = store_->AddClass("lin", "三年一班");
    otherClass_ = store_->AddClass("wu", "三年二班");
    store_->AddPupils("lin", class_, {{"S01", "王小明"}, {"S02", "李小華"}});
    store_->AddPupils("wu", otherClass_, {{"S03", "陳怡君"}});
    store_->AddTopic("lin", {kTopic, class_, "", "My Family", "Who are they?", "2026-12-01", ""});
    store_->AddTopic("wu", {kOtherTopic, otherClass_, "", "Secret topic", "Why?", "2026-12-01", ""});
    HandIn("S01", kTopic, "he goes. He stays.");
    HandIn("S03", kOtherTopic, "Secret essay.");
  }

  void HandIn(const std::string& account, const std::string& topic, const std::string& essay) {
    server::RecordStore records(server_.Database());
    records.StorePost(account, "",
                      {{false, "", protocol::EssayRow{"2026-11-05", "e1", topic, "N", "T", essay, essay}}});
    EXPECT_EQ(store_->StoreHandIn(account, "e1", topic, "2026-11-05"), server::HandInResult::kTaken);
  }

  /// A teacher who has logged in and looked at the classes.
  TeacherClient LoggedIn(const std::string& login) {
    TeacherClient client(server_);
    EXPECT_EQ(client.LogIn(login, kPassword).status, 303);
    EXPECT_EQ(client.Get("").status, 200);
    return client;
  }

  server::HandIn WorkOf(const std::string& teacher, const std::string& topic) {
    return store_->HandIns(teacher, topic).at(0);
  }

  /// All that a teacher could change, as one text.
  std::string Everything() {
    std::string all;
    for (const char* teacher : {"lin", "wu"}) {
      for (const auto& each : store_->Classes(teacher)) {
        all += each.name + "\n";
        for (const auto& pupil : store_->Pupils(teacher, each.id)) all += pupil.account + pupil.name + "\n";
        for (const auto& topic : store_->Topics(teacher, each.id)) {
          all += topic.title + topic.question + topic.deadline + topic.changedDay + "\n";
          for (const auto& work : store_->HandIns(teacher, topic.id))
            all += work.comment + work.markedDay + "\n";
        }
      }
    }
    return all;
  }

  std::chrono::steady_clock::time_point now_{};
  const RunningServer server_;
  std::unique_ptr<server::SchoolStore> store_;
  std::string class_;
  std::string otherClass_;
};
