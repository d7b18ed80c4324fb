// One essay through both editions: the terminal program, and the windows that the desktop shows. Real server,
// real engine, equal rows.
#include "core/key_value_file.h"
#include "platform/host/curl_http.h"
#include "tests/app/terminal_run.h"
#include "tests/essay/essay_fixture.h"
#include "tests/records/record_store.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

using ::testing::SizeIs;

struct Line {
  const char* sentence;
  const char* correction = nullptr;  ///< of a faulty one
  bool isToWatch = false;
};

// 25 sentences, of which six are faulty and two are to be watched.
constexpr Line kEssay[] = {{"My name is Tom."},
                           {"I live in Taipei with my parents."},
                           {"I have two brothers."},
                           {"He go to school every day.", "He goes to school every day."},
                           {"We get up at seven."},
                           {"We have breakfast together."},
                           {"I like milk and bread."},
                           {"There is many books on the desk.", "There are many books on the desk."},
                           {"My father is a doctor."},
                           {"I have a dog, it is big.", nullptr, true},
                           {"He plays with me in the park."},
                           {"They was late yesterday.", "They were late yesterday."},
                           {"The teacher was not happy."},
                           {"We said sorry to her."},
                           {"I am agree with you.", "I agree with you."},
                           {"I read a book every week."},
                           {"My sister likes music."},
                           {"She very like apples.", "She likes apples very much."},
                           {"She can play the piano."},
                           {"I have a cat, it is small.", nullptr, true},
                           {"It sleeps on my bed."},
                           {"I look forward to see you.", "I look forward to seeing you."},
                           {"You can visit me in summer."},
                           {"We can go to the beach."},
                           {"I hope you are well."}};

std::string EssayText(const char* lineEnd) {
  std::string text;
  for (const Line& line : kEssay) text += std::string(text.empty() ? "" : lineEnd) + line.sentence;
  return text;
}

/// What both editions must have written alike.
std::vector<std::string> RowsOf(const std::filesystem::path& records) {
  base::SqliteDatabases databases;
  return Rows(
      databases, records,
      "select * from (select 'ok', sentence, '', haveHtm from oksentence order by essaySId)"
      " union all select * from (select 'err', sentence, errcode, haveHtm from errsentence order by id)"
      " union all select * from (select 'times', errcode, times, '' from mistakes order by errcode)"
      " union all select finalSet, orgEssay, newEssay, '' from essay");
}

std::vector<std::string> RowsOfTerminal() {
  const TempHome home;
  const std::string file = home / "essay.txt";
  base::PosixFiles().Write(file, EssayText("\n"), false);
  std::string corrections;
  for (const Line& line : kEssay) {
    if (line.correction != nullptr) corrections += std::string(line.correction) + "\n";
  }
  RunTerminalProgram(home, 0, {"essay", file}, corrections);
  return RowsOf(home / ".local/share/marovane/marovane/Marovane.mdb");
}

class Editions : public EssayTest {
 protected:
  Editions() {
    for (const char* const page : {"", "p_all_webengine_get.asp", "p_passWebEngine_conn.asp", "p_getconn.asp",
                                   "p_all_engine_htm_rec.asp", "p_passWebEngine.asp"}) {
      machine.http.Route(page, [this](const base::HttpRequest& request) { return curl_.Send(request); });
    }
    app.gPublisherRoot = app.gServerUrlRoot = app.gFileServerRoot = server_.Root();
    app.gAccountNo = ReadWriteSetFile(machine.realFiles, account_, "R", "Pno", "");
  }

  std::vector<std::string> RowsOfWindows() {
    for (const Line& line : kEssay) {
      if (line.correction != nullptr) {
        ExpectMessage(Message::kWrongSentence);
        Correct(line.correction);
      }
      if (line.isToWatch) ExpectMessage(Message::kDoubtfulSentence, kNo);
    }
    ExpectMessage(Message::kEssayDone);
    Send(EssayText("\r\n"));
    EXPECT_EQ(machine.user.Expected(), 0U);
    return RowsOf(machine.home / "tmp/marovane/Marovane.mdb");
  }

 private:
  std::string account_ = machine.home / "account.set";
  RealServer server_{machine.loop, {"--data", machine.home / "server", "--account", account_}};
  CurlHttp curl_{machine.loop};
};

TEST_F(Editions, WriteTheSameRowsOfALongEssay) {
  const auto rows = RowsOfWindows();
  EXPECT_THAT(rows, SizeIs(::testing::Ge(25 + 6 + 5 + 1U)));
  const auto count = [&](const std::string& kind) {
    return std::ranges::count_if(rows, [&](const auto& row) { return row.starts_with(kind + "|"); });
  };
  EXPECT_EQ(count("ok"), 25);
  EXPECT_EQ(count("err"), 6);
  EXPECT_EQ(RowsOfTerminal(), rows);
}

}  // namespace

}  // namespace marovane
