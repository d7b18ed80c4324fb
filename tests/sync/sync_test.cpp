// Upload and synchronisation over the server's own pages.
#include "tests/sync/computer.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SyncTest : public ::testing::Test {
 protected:
  FakeHttp::Answer Forward() {
    return [this](const HttpRequest& request) { return server.Answer(request); };
  }
  std::size_t Requests(const std::string& page) { return home.machine.http.Bodies(page).size(); }

  SyncServer server;
  Computer home{Forward()}, school{Forward()};
};

TEST_F(SyncTest, BringsTheRecordsOfOneComputerToTheOther) {
  home.AddOk("He goes to school.");
  home.AddOk("It's \"5 < 6\" & 7 > 2 + 1% #1 | <@> 中文, 😀 é ‧·");
  home.AddErr("He *go* to school.", "AG01");
  const std::string essay = home.AddEssay("One.\r\n\r\nTwo # 3 || <@> four.\n");
  home.AddOk("One.", essay);
  ASSERT_TRUE(home.Sync("UPLOAD"));
  ASSERT_TRUE(school.Sync("NOMSG"));

  EXPECT_EQ(school.Contents(), home.Contents());
  EXPECT_EQ(Contents(server), home.Contents());
  EXPECT_EQ(school.Contents().size(), 5U);
  EXPECT_THAT(home.Query("select distinct upload from oksentence", 1), ElementsAre("Y"));
  EXPECT_THAT(school.Query("select distinct upload from oksentence", 1), ElementsAre("Y"));
  EXPECT_EQ(school.running->frmMain.Left(), 4711);
  EXPECT_TRUE(school.running->frmMain.Enabled());
  EXPECT_TRUE(school.App().gUploadFinished);
  EXPECT_FALSE(school.running->frmUpload.IsLoaded());

  school.machine.http.requests.clear();
  ASSERT_TRUE(school.Sync("NOMSG"));
  EXPECT_EQ(school.machine.http.requests.size(), 1U) << "the quick path asks for the checksum alone";
}

}  // namespace
