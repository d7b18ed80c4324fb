// Servers that are moved, restored from a copy or set up anew, and refuse: nothing of a learner's is gone,
// and nothing is there twice.
#include <fmt/format.h>

#include <array>
#include <functional>

#include "base/posix_files.h"
#include "tests/support/expect_message.h"
#include "tests/sync/computer.h"

namespace marovane {

namespace {

using namespace ::testing;

/// Three computers of a learner, and a server that can be restored.
class LostServerTest : public ::testing::Test {
 protected:
  LostServerTest() {
    Open("server.db");
    for (auto& computer : computers) {
      computer = std::make_unique<Computer>([this](const base::HttpRequest& request) {
        ++now_;
        return pages_->Answer(request);
      });
      computer->machine.loop.Advance(std::chrono::milliseconds{++now_});
    }
  }

  void TearDown() override {
    for (auto& computer : computers) {
      EXPECT_EQ(computer->machine.user.Expected(), 0U) << "messages that never came";
    }
  }

  /// Another database of the same or of no content.
  void Open(const std::string& name) {
    pages_ = std::make_unique<SyncPages>(folder_ / name);
    for (const char* account : {SyncServer::kAccount, "second"}) {
      pages_->AddAccount(account, SyncServer::kOldPassword);
    }
  }
  void BackUp() { pages_->Query("vacuum into '" + (folder_ / "backup.db").string() + "'"); }
  void SyncAll(int rounds = 2) {
    for (int round = 0; round < rounds; ++round) {
      for (auto& computer : computers) EXPECT_TRUE(computer->Sync("NOMSG"));
    }
  }
  void ExpectAllEqual() {
    const auto onServer = ServerContents(pages_->Database(), SyncServer::kAccount);
    for (auto& computer : computers) EXPECT_EQ(computer->Contents(), onServer);
  }
  Computer& At(std::size_t i) { return *computers[i]; }
  static std::string Right(const std::string& sentence) { return "|" + sentence + "|2026-11-05|0|0|N|"; }

  TempFolder folder_;
  std::unique_ptr<SyncPages> pages_;
  std::array<std::unique_ptr<Computer>, 3> computers;

 private:
  int now_ = 0;
};

TEST_F(LostServerTest, ARestoredServerGetsTheWeekOfThreeComputersBack) {
  At(0).AddOk("Before.");
  At(0).AddOk("Deleted before.");
  const std::string essay = At(0).AddEssay("One.");
  SyncAll();
  BackUp();
  At(1).Records().Db().Run("update oksentence set upload = 'D' where sentence = 'Deleted before.'");
  EssayRecords(At(2).Records()).FinishEssay(essay, "Finished.");
  for (auto& computer : computers) computer->AddOk("The same on each.");
  At(0).AddErr("Of *one*.", "AG01");
  SyncAll();
  At(2).AddOk("Not sent.");
  const auto before = At(0).Contents();
  ASSERT_THAT(before, SizeIs(6));

  Open("backup.db");
  SyncAll(3);
  ExpectAllEqual();
  auto wanted = before;
  wanted.insert(Right("Not sent."));
  EXPECT_EQ(At(0).Contents(), wanted) << "each once, and what was deleted stays so";
}

TEST_F(LostServerTest, AServerSetUpAnewGetsEverything) {
  At(0).AddOk("First.");
  At(0).AddOk("Gone.");
  At(1).AddEssay("One.");
  SyncAll();
  At(0).Records().Db().Run("update oksentence set upload = 'D' where sentence = 'Gone.'");
  SyncAll();
  const auto before = At(2).Contents();
  Open("another.db");
  SyncAll();
  ExpectAllEqual();
  EXPECT_EQ(At(0).Contents(), before);
}

// The work since the copy was made is on one computer, which does not know that it was taken in.
TEST_F(LostServerTest, AReplyThatGotLostBeforeARestoreLosesNothing) {
  At(0).AddOk("Before.");
  SyncAll();
  BackUp();
  At(0).AddOk("After.");
  At(0).machine.http.Queue(kUpload, [this](const base::HttpRequest& request) -> base::HttpResponse {
    pages_->Answer(request);
    throw RunTimeError("the reply got lost");
  });
  At(0).Sync("NOMSG");
  Open("backup.db");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(1).Contents(), SizeIs(2));
}

// The server lost rows of which it says nothing, and knows all that the computer has seen.
TEST_F(LostServerTest, RowsThatNobodyHasDeletedComeBackToTheServer) {
  At(0).AddOk("Kept.");
  At(0).AddErr("*Lost*.", "AG01");
  SyncAll();
  pages_->Query("delete from sentence where errcode <> ''");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(2).Contents(), SizeIs(2));
}

TEST_F(LostServerTest, AnEssayThatIsFinishedDoesNotBecomeUnfinished) {
  const std::string essay = At(0).AddEssay("One.");
  SyncAll();
  EssayRecords(At(0).Records()).FinishEssay(essay, "Finished.");
  At(0).Sync("NOMSG");
  At(1).Records().Db().Run("update essay set upload = 'N'");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(1).Query("select newEssay || finalSet from essay"), ElementsAre("Finished.N"));
}

// The server knows the essay as begun. What came after it does not arrive, though the computer thinks so.
TEST_F(LostServerTest, AnEssayOfWhichTheServerMissesTheEndStaysFinished) {
  const auto folder = OutboxFolder(At(0).running->program);
  base::PosixFiles& files = At(0).machine.realFiles;
  const auto replace = [&](const std::function<void(const std::filesystem::path&)>& put) {
    At(0).machine.http.RouteToNowhere(kUpload);
    At(0).Sync("NOMSG");
    const auto names = files.List(folder);
    ASSERT_THAT(names, SizeIs(1));
    files.Delete(folder / names[0]);
    put(folder / names[0]);
  };
  const std::function<void(const std::string&)> accidents[] = {
      [&](const std::string&) {
        replace([&](const std::filesystem::path& post) { files.Write(post, "damaged", true); });
      },
      // A file that the disk does not give back.
      [&](const std::string&) {
        replace([](const std::filesystem::path& post) { create_symlink("/proc/self/mem", post); });
      },
      // Another process finishes it while it is sent as begun.
      [&](const std::string& essay) {
        At(0).Records().Db().Run("update essay set finalSet = 'A', newEssay = 'Text.', upload = 'N'");
        At(0).machine.http.Queue(kUpload, [&, essay](const base::HttpRequest& request) {
          At(0)
              .machine.realDatabases.Open(At(0).recordsPath, base::Databases::Mode::kReadWrite)
              ->Run("update essay set finalSet = 'N', newEssay = 'Finished.' where essayId = ?", {essay});
          return pages_->Answer(request);
        });
        At(0).Sync("NOMSG");
      }};
  for (const auto& accident : accidents) {
    At(0).Records().Db().Run("delete from essay");
    Open(fmt::format("{}.db", &accident - accidents));
    const std::string essay = At(0).AddEssay("Text.");
    At(0).Sync("NOMSG");
    EssayRecords(At(0).Records()).FinishEssay(essay, "Finished.");
    accident(essay);
    At(0).machine.http.Route(kUpload,
                             [this](const base::HttpRequest& request) { return pages_->Answer(request); });
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(At(0).Sync("NOMSG"));
    EXPECT_THAT(At(0).Query("select newEssay || finalSet from essay"), ElementsAre("Finished.N"));
    EXPECT_EQ(ServerContents(pages_->Database(), SyncServer::kAccount), At(0).Contents());
  }
}

TEST_F(LostServerTest, ARestoreThatTheFirstComparisonMissedUndoesNothing) {
  const std::string essay = At(0).AddEssay("One.");
  At(0).AddOk("Gone.");
  SyncAll();
  BackUp();
  EssayRecords(At(0).Records()).FinishEssay(essay, "Finished.");
  At(0).Records().Db().Run("update oksentence set upload = 'D'");
  At(0).Sync("NOMSG");
  Open("backup.db");
  At(0).AddOk("New.");
  At(0).machine.http.Queue(kCompare, [](const base::HttpRequest&) -> base::HttpResponse {
    throw RunTimeError("the reply got lost");
  });
  SyncAll(3);
  ExpectAllEqual();
  EXPECT_THAT(At(0).Query("select newEssay || finalSet from essay"), ElementsAre("Finished.N"));
  EXPECT_THAT(At(1).Query("select sentence from oksentence"), ElementsAre("New."));
}

// The same learner has applied for another account: the next synchronisation used to erase the diary.
TEST_F(LostServerTest, ANewAccountKeepsWhatIsOnTheComputer) {
  At(0).AddOk("Under the old number.");
  At(0).AddEssay("One.");
  At(0).Sync("NOMSG");
  At(0).App().gAccountNo = At(0).App().gUploadAccountNo = "second";
  At(0).AddOk("Under the new one.");
  for (int i = 0; i < 2; ++i) At(0).running->program.hall.frmUpload->SyncProgress("NOMSG");
  EXPECT_THAT(At(0).Contents(), SizeIs(3));
  EXPECT_EQ(ServerContents(pages_->Database(), "second"), At(0).Contents());
}

// Each computer has seen its own alone. Of rows that other computers have sent none is one's own.
TEST_F(LostServerTest, EqualSentencesOfTwoComputersAreTwo) {
  At(0).AddOk("Before.");
  SyncAll();
  BackUp();
  At(1).AddOk("Same.");
  At(1).Sync("NOMSG");
  At(0).AddOk("Same.");
  Open("backup.db");
  SyncAll(3);
  ExpectAllEqual();
  EXPECT_THAT(At(0).Contents(), SizeIs(3));
}

TEST_F(LostServerTest, SendsEverythingBeforeAnUpdateOrSaysNo) {
  const auto sendsEverything = [this] { return At(0).running->program.hall.frmUpload->SendEverything(); };
  At(1).AddOk("Theirs.");
  At(1).Sync("NOMSG");
  At(0).AddOk("Mine.");
  EXPECT_TRUE(sendsEverything());
  EXPECT_THAT(ServerContents(pages_->Database(), SyncServer::kAccount), SizeIs(2));
  At(0).machine.realFiles.Rename(At(0).recordsPath, At(0).recordsPath.string() + ".aside");
  CreateRecords(At(0).machine.realDatabases, At(0).recordsPath);
  EXPECT_THAT(At(0).Records().Days(), IsEmpty()) << "the old one was closed";

  const std::function<base::HttpResponse(const base::HttpRequest&)> troubles[] = {
      [](const base::HttpRequest&) -> base::HttpResponse { throw RunTimeError("no connection"); },
      [](const base::HttpRequest& request) {
        return base::HttpResponse{200, "", "ERR_BAD_TEXT", request.url};
      },
      [](const base::HttpRequest& request) {
        return base::HttpResponse{200, "", "ERR_NOTFOUND", request.url};
      },
      [](const base::HttpRequest& request) {
        return base::HttpResponse{200, "", "<html>", request.url};
      }};
  for (const auto& trouble : troubles) {
    At(0).AddOk("More.");
    At(0).machine.http.Route(kUpload, trouble);
    EXPECT_FALSE(sendsEverything());
  }
}

// A server of somebody else's, which says nothing of itself.
TEST_F(LostServerTest, WhatAnUnknownServerLacksIsCopiedAndTold) {
  auto& http = At(0).machine.http;
  http.Route(kCompare, "DIFFERENT");
  http.Route(kStream, "FINISH");
  At(0).AddOk("Mine.");
  At(0).Sync("UPLOAD");
  ExpectMessage(At(0).machine.user, Message::kRecordsSetAside, kOk, "共 1 筆");
  At(0).Sync("NOMSG");
  EXPECT_THAT(At(0).Contents(), IsEmpty());
  const auto aside = At(0).recordsPath.parent_path() / "set-aside";
  const auto names = At(0).machine.realFiles.List(aside);
  ASSERT_THAT(names, SizeIs(1));
  EXPECT_THAT(Rows(At(0).machine.realDatabases, aside / names[0], "select sentence from oksentence"),
              ElementsAre("Mine."));
  At(0).Sync("NOMSG");
  EXPECT_THAT(At(0).machine.realFiles.List(aside), SizeIs(1)) << "once";
}

TEST_F(LostServerTest, AReloadThatIsGivenUpLeavesNoCopy) {
  auto& http = At(0).machine.http;
  http.Route(kCompare, "DIFFERENT");
  http.Route(kStream, "FINISH");
  At(0).AddOk("Mine.");
  At(0).Sync("UPLOAD");
  http.Route(kStream, [this](const base::HttpRequest& request) -> base::HttpResponse {
    At(0).AddOk("Meanwhile.");
    return {200, "", "FINISH", request.url};
  });
  At(0).Sync("DOWNLOAD");
  EXPECT_THAT(At(0).machine.realFiles.List(At(0).recordsPath.parent_path() / "set-aside"), IsEmpty());
  EXPECT_THAT(At(0).Contents(), SizeIs(4));
}

TEST_F(LostServerTest, AServerOfAnOlderVersionGetsWhatAnotherOneHad) {
  At(0).AddOk("Mine.");
  At(0).Sync("NOMSG");
  auto& http = At(0).machine.http;
  http.Route(kCompare, "DIFFERENT");
  http.Queue(kStream, "#Theirs.#2026/11/5#0#0#N<@>FINISH");
  http.Queue(kStream, "FINISH");
  http.Queue(kStream, "FINISH");
  http.Route(kUpload, "OK_");
  http.requests.clear();
  At(0).Sync("NOMSG");
  EXPECT_THAT(At(0).Contents(), ElementsAre(Right("Mine."), Right("Theirs.")));
  EXPECT_THAT(http.Bodies(kUpload), ElementsAre(HasSubstr("&s1=Mine.&")));
}

class RefusedTest : public LostServerTest {
 protected:
  std::vector<std::string> Flags() { return At(0).Query("select upload from oksentence order by sId"); }
};

TEST_F(RefusedTest, AnUnknownAccountIsToldOnceAndHealedByAKnownOne) {
  At(0).App().gAccountNo = "nobody";
  At(0).AddOk("Mine.");
  ExpectMessage(At(0).machine.user, Message::kWrongAccount);
  At(0).App().gUploadAccountNo = "nobody";
  for (int i = 0; i < 2; ++i) At(0).running->program.hall.frmUpload->SyncProgress("NOMSG");
  EXPECT_THAT(Flags(), ElementsAre("N"));
  EXPECT_THAT(At(0).machine.realFiles.List(OutboxFolder(At(0).running->program)), IsEmpty());
  At(0).App().gAccountNo = SyncServer::kAccount;
  At(0).Sync("NOMSG");
  EXPECT_THAT(Flags(), ElementsAre("Y"));
  EXPECT_THAT(ServerContents(pages_->Database(), SyncServer::kAccount), SizeIs(1));
}

TEST_F(RefusedTest, NothingIsUploadedWithoutAnAccount) {
  At(0).App().gAccountNo = "";
  At(0).AddOk("Mine.");
  At(0).App().gUploadAccountNo = "";
  At(0).running->program.hall.frmUpload->SyncProgress("NOMSG");
  EXPECT_THAT(At(0).machine.http.requests, IsEmpty());
  EXPECT_THAT(Flags(), ElementsAre("N"));
}

TEST_F(RefusedTest, OneRowThatAServerDoesNotTakeKeepsNoOtherBack) {
  for (int i = 0; i < 5; ++i) At(0).AddOk(fmt::format("Number {}.", i));
  At(0).machine.http.Route(kUpload, [this](const base::HttpRequest& request) -> base::HttpResponse {
    if (request.body.find("Number+3.") != std::string::npos) return {200, "", "ERR_BAD_TEXT", request.url};
    return pages_->Answer(request);
  });
  ExpectMessage(At(0).machine.user, Message::kRowsRefused, kOk, "共 1 筆");
  At(0).Sync("NOMSG");
  EXPECT_THAT(Flags(), ElementsAre("Y", "Y", "Y", "R", "Y"));
  At(0).Sync("NOMSG");
  EXPECT_THAT(At(0).Contents(), SizeIs(5)) << "no word any more, and no reload takes it";
  EXPECT_THAT(ServerContents(pages_->Database(), SyncServer::kAccount), SizeIs(4));
  At(0).machine.http.Route(kUpload,
                           [this](const base::HttpRequest& request) { return pages_->Answer(request); });
  At(0).Sync("NOMSG");
  EXPECT_THAT(ServerContents(pages_->Database(), SyncServer::kAccount), SizeIs(5)) << "a newer server may";
}

TEST_F(RefusedTest, ARefusedRowThatAnotherComputerHasSentIsThereOnce) {
  At(0).AddOk("Mine.");
  const std::string id = At(0).Query("select sId from oksentence")[0];
  At(1).Records().InsertOkSentence({.sId = id, .sentence = "Mine.", .sDate = DayFromIso("2026-11-05")});
  At(0).machine.http.Queue(kUpload, "ERR_BAD_TEXT");
  ExpectMessage(At(0).machine.user, Message::kRowsRefused, kOk, "共 1 筆");
  At(0).Sync("NOMSG");
  ASSERT_THAT(Flags(), ElementsAre("R"));
  At(1).Sync("NOMSG");
  At(0).Sync("NOMSG");
  EXPECT_THAT(Flags(), ElementsAre("Y"));
  ExpectMessage(At(0).machine.user, Message::kRowsRefused, kOk, "共 1 筆");
  At(0).machine.http.Queue(kUpload, "ERR_TOO_LONG");
  const std::string essay = At(0).AddEssay("One.");
  At(0).Sync("NOMSG");
  EssayRecords(At(0).Records()).FinishEssay(essay, "Finished.");
  EXPECT_THAT(At(0).Query("select upload from essay"), ElementsAre("N")) << "it is another text now";
}

// Between the school and its learners there may be a proxy that takes no long posts.
TEST_F(RefusedTest, APostThatIsTooLongForAProxyGoesInParts) {
  for (int i = 0; i < 5; ++i) At(0).AddOk(fmt::format("Number {}.", i));
  for (const bool isLaterAgain : {false, true}) {
    At(0).machine.http.RouteToNowhere(kUpload);
    if (isLaterAgain) At(0).Sync("NOMSG");
    At(0).machine.http.Route(kUpload, [this](const base::HttpRequest& request) -> base::HttpResponse {
      constexpr std::size_t kLimit = 300;
      if (request.body.size() > kLimit) return {413, "text/html", "<html>413</html>", request.url};
      return pages_->Answer(request);
    });
    At(0).Sync("NOMSG");
    EXPECT_THAT(At(0).Query("select distinct upload from oksentence"), ElementsAre("Y"));
    EXPECT_EQ(ServerContents(pages_->Database(), SyncServer::kAccount), At(0).Contents());
    At(0).AddOk("One more.");
    At(0).AddOk("Another one.");
  }
}

TEST_F(RefusedTest, APostOfAnotherAccountWaitsAndBlocksNobody) {
  Outbox outbox(At(0).running->program);
  Post theirs{.id = "1",
              .account = "second",
              .kept = "",
              .body = "key=zorbelquinter&pno=second&k1=N&s1=Theirs.&ht1=N",
              .isMarked = true,
              .newIds = {},
              .deletedIds = {}};
  outbox.Keep(theirs);
  At(1).AddOk("Mine.");
  At(1).Sync("UPLOAD");
  At(0).Sync("NOMSG");
  EXPECT_THAT(At(0).Contents(), ElementsAre(Right("Mine."))) << "a reload was possible";
  EXPECT_THAT(ServerContents(pages_->Database(), "second"), IsEmpty());
  At(0).App().gAccountNo = "second";
  EXPECT_THAT(outbox.Posts(), SizeIs(1)) << "it waits for its account";
}

TEST_F(RefusedTest, ADamagedFileOfTheOutboxIsSetAsideAndItsRowsAreSentAgain) {
  const auto folder = OutboxFolder(At(0).running->program);
  base::PosixFiles& files = At(0).machine.realFiles;
  At(0).AddOk("First.");
  At(0).AddOk("Deleted.");
  At(0).Sync("NOMSG");
  const std::function<std::string(std::string)> damages[] = {
      [](const std::string& whole) { return whole.substr(0, whole.size() / 2); },
      [](const std::string& whole) { return whole.substr(0, 7); },
      [](const std::string&) { return std::string(); }, [](const std::string& whole) { return whole + "x"; },
      [](const std::string& whole) { return std::string(whole.size(), '\0'); }};
  std::size_t wanted = 1;
  for (const auto& damage : damages) {
    At(0).machine.http.RouteToNowhere(kUpload);
    At(0).AddOk(fmt::format("Number {}.", ++wanted));
    At(0).Records().Db().Run("update oksentence set upload = 'D' where sentence = 'Deleted.'");
    At(0).Sync("NOMSG");
    At(0).machine.http.Route(kUpload,
                             [this](const base::HttpRequest& request) { return pages_->Answer(request); });
    const std::string name = files.List(folder).at(0);
    const std::string damaged = damage(files.Read(folder / name));
    files.Write(folder / name, damaged, true);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(At(0).Sync("NOMSG"));
    EXPECT_THAT(files.List(folder), IsEmpty());
    EXPECT_EQ(files.Read(folder / "damaged" / name), damaged);
    EXPECT_THAT(At(0).Contents(), ::testing::AllOf(SizeIs(wanted), Not(Contains(Right("Deleted.")))));
    EXPECT_EQ(ServerContents(pages_->Database(), SyncServer::kAccount), At(0).Contents());
  }
}

/// What an older version has left on the computers: rows without ids, and posts without accounts.
class UpdatedTest : public LostServerTest {
 protected:
  void MakeOlder(std::size_t i, const std::vector<std::string>& sentences, const char* flag) {
    At(i).Die();
    std::filesystem::remove(At(i).recordsPath);
    CreateRecords(At(i).machine.realDatabases, At(i).recordsPath, 1);
    const auto db = At(i).machine.realDatabases.Open(At(i).recordsPath, base::Databases::Mode::kReadWrite);
    for (const auto& sentence : sentences) {
      db->Run("insert into oksentence values (?, 'N', ?, '2026-11-05', ?, '0', '0', 'N')",
              {fmt::format("6577956010{:04}", ++made_), sentence, flag});
    }
    At(i).Start();
  }
  void PutPost(std::size_t i, const std::string& head, const std::string& account, const std::string& rows) {
    const auto folder = OutboxFolder(At(i).running->program);
    At(i).machine.realFiles.CreateFolder(folder, true);
    At(i).machine.realFiles.Write(folder / "65779560100099.post",
                                  head + "key=zorbelquinter&pno=" + account + "&frompno=&grade=" + rows,
                                  true);
  }
  /// As older programs have posted them.
  void HasOnServer(const std::vector<std::string>& sentences) {
    for (const auto& sentence : sentences) {
      pages_->Answer(PostOf(SyncServer::kAccount, SyncServer::kAccount,
                            "&k1=N&err1=&s1=" + sentence +
                                "&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N&x=" + std::to_string(++made_)));
    }
  }
  /// The database of the server as it was before rows had ids.
  void MakeServerOlder() {
    pages_->Query("drop index sentence_uid");
    for (const char* const table : {"gone", "server", "post", "token"})
      pages_->Query(std::string("drop table ") + table);
    pages_->Query("alter table sentence drop column uid");
    pages_->Query("create table post (account text, id text, primary key (account, id)) without rowid");
    pages_->Query("pragma user_version = 6");
  }
  int made_ = 0;
};

TEST_F(UpdatedTest, RowsThatAnOlderServerHasTakenWithoutTheirIdsAreTheOnesThatItHas) {
  for (int i = 0; i < 2; ++i) At(0).AddOk("Twice.");
  At(0).AddErr("*Once*.", "AG01");
  At(0).Sync("NOMSG");
  MakeServerOlder();
  Open("server.db");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(1).Contents(), SizeIs(3));
}

// The program's own server has lost its database just when the program has become a newer one.
TEST_F(UpdatedTest, AnEmptyServerGetsTheOldRowsAlsoWhenAPostWaits) {
  MakeOlder(0, {"Old.", "Waits."}, "Y");
  PutPost(0, "id1\n\n0\n\n\n", SyncServer::kAccount,
          "&k1=N&err1=&s1=Waits.&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(1).Contents(), ElementsAre(Right("Old."), Right("Waits.")));
}

TEST_F(UpdatedTest, RowsFindTheirTwinsOnTheServer) {
  HasOnServer({"Twice.", "Twice.", "Once."});
  for (const std::size_t i : {0U, 1U}) MakeOlder(i, {"Twice.", "Once.", "Twice."}, "Y");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(2).Contents(), SizeIs(3));
  EXPECT_THAT(At(0).Query("select count(*) from oksentence where length(sId) = 25"), ElementsAre("3"));
}

TEST_F(UpdatedTest, ANewServerGetsTheOldRowsOfAllComputersOnce) {
  for (const std::size_t i : {0U, 1U}) MakeOlder(i, {"Twice.", "Once.", "Twice."}, "Y");
  MakeOlder(2, {"Of the third."}, "N");
  SyncAll(3);
  ExpectAllEqual();
  EXPECT_THAT(At(0).Contents(), SizeIs(4));
}

// The server is restored from a copy of before its own update, which then takes place once more.
TEST_F(UpdatedTest, ACopyFromBeforeTheUpdateOfTheServerHasTheSameIds) {
  HasOnServer({"First.", "Second."});
  SyncAll();
  const auto ids = pages_->Query("select uid from sentence order by id");
  MakeServerOlder();
  Open("server.db");
  EXPECT_EQ(pages_->Query("select uid from sentence order by id"), ids);
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(0).Contents(), SizeIs(2));
}

TEST_F(UpdatedTest, PostsOfTheOlderVersionArriveOnce) {
  MakeOlder(0, {"On its way."}, "N");
  PutPost(0, "id1\n\n0\n65779560100001\n\n", SyncServer::kAccount,
          "&k1=N&err1=&s1=On+its+way.&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(1).Contents(), ElementsAre(Right("On its way."))) << "killed before its rows were marked";
  MakeOlder(0, {"On its way.", "Marked."}, "Y");
  PutPost(0, "id2\n\n0\n\n\n", SyncServer::kAccount,
          "&k1=N&err1=&s1=Marked.&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N");
  SyncAll();
  ExpectAllEqual();
  EXPECT_THAT(At(1).Contents(), ElementsAre(Right("Marked."), Right("On its way.")));
}

// The account was empty, or unknown, or a text was not in UTF-8: such posts waited for ever.
TEST_F(UpdatedTest, RefusedPostsOfTheOlderVersionAreHealed) {
  for (const std::string account : {"", "nobody"}) {
    MakeOlder(0, {"Waits."}, "Y");
    HasOnServer({"Another."});
    PutPost(0, "id" + account + "\n\n0\n\n\n", account,
            "&k1=N&err1=&s1=Waits.&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N&k2=N&s2=%FF&ht2=N");
    SyncAll(1);
    if (account.empty()) {
      EXPECT_THAT(At(1).Contents(), Contains(Right("Waits.")));
    } else {
      EXPECT_THAT(At(1).Contents(), Contains(Right("Another."))) << "another account's post blocks nobody";
    }
  }
}

}  // namespace

}  // namespace marovane
