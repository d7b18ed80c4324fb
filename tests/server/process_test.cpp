// The program itself: its command line, the embedded mode, and how it ends.
#include <gmock/gmock.h>

#include <csignal>
#include <set>

#include "base/key_values.h"
#include "base/posix_files.h"
#include "server/accounts/password.h"
#include "server/store/account_store.h"
#include "server/store/school_store.h"
#include "tests/server/child_process.h"
#include "tests/server/running_server.h"
#include "tests/support/run_program.h"

using namespace marovane;

namespace {

using namespace ::testing;

/// No language data: the server runs without an engine.
class ProcessTest : public testing::Test {
 protected:
  ProcessTest() { std::filesystem::create_directory(folder_ / "engine"); }

  std::vector<std::string> Embedded() const {
    return {"--embedded",       "--data",    folder_ / "data", "--engine-data",
            folder_ / "engine", "--account", account_};
  }

  TempFolder folder_;
  const std::filesystem::path account_ = folder_ / "config/account.set";
};

struct Address {
  std::string host, path;
};

Address Split(const std::string& root) {
  const std::size_t slash = root.find('/', std::string("http://").size());
  return {root.substr(0, slash), root.substr(slash)};
}

int Status(const std::string& host, const std::string& path) {
  const auto answer = httplib::Client(host).Post(path, "key=zorbelquinter", "text/xml; charset=big5");
  return answer ? answer->status : 0;
}

std::string Login(const std::string& root, const std::filesystem::path& accountFile) {
  const auto account = base::KeyValues::Read(base::PosixFiles(), accountFile);
  const Address address = Split(root);
  const auto answer = httplib::Client(address.host)
                          .Post(address.path + "p_getlogin.asp",
                                "key=zorbelquinter&pno=" + account.Find("Pno").value_or("") + "&password=" +
                                    account.Find("userPW").value_or("") + "&username=&email=&district=",
                                "text/xml; charset=big5");
  return answer ? answer->body : "";
}

TEST_F(ProcessTest, EmbeddedAnswersOnlyBelowItsPrefixOnLoopback) {
  ChildServer server(Embedded());
  const std::string root = server.Root();
  ASSERT_THAT(root, MatchesRegex("http://127\\.0\\.0\\.1:[0-9]+/[0-9a-f]{32}/"));
  const Address address = Split(root);
  EXPECT_EQ(Status(address.host, address.path + "p_getconn.asp"), 200);
  EXPECT_EQ(httplib::Client(address.host).Get(address.path + "teacher/login")->status, 404);
  std::string wrong = address.path;
  wrong[5] = wrong[5] == '0' ? '1' : '0';
  for (const std::string& path : {wrong, std::string("/"), std::string("//"), address.path.substr(0, 33)}) {
    EXPECT_EQ(Status(address.host, path + "p_getconn.asp"), 404) << path;
  }
  const std::string port = address.host.substr(address.host.rfind(':'));
  EXPECT_EQ(Status("http://127.0.0.2" + port, address.path + "p_getconn.asp"), 0)
      << "it listens elsewhere too";
}

TEST_F(ProcessTest, EmbeddedEndsWithItsInputAndWhenItsParentIsKilled) {
  ChildServer server(Embedded());
  ASSERT_THAT(server.Root(), Not(""));
  server.CloseInput();
  EXPECT_TRUE(server.HasEnded());
  EXPECT_EQ(server.ExitStatus(), 0);
  ChildServer child(Embedded(), true);
  ASSERT_THAT(child.Root(), Not(""));
  child.Signal(SIGKILL);  // the test still holds the input open
  EXPECT_TRUE(child.HasEnded());
}

TEST_F(ProcessTest, TerminationEndsItCleanly) {
  ChildServer server({"--port", "0", "--data", folder_ / "data", "--engine-data", folder_ / "engine",
                      "--prefix", "school/"});
  ASSERT_THAT(server.Root(), MatchesRegex("http://127\\.0\\.0\\.1:[0-9]+/school/"));
  server.CloseInput();
  server.Signal(SIGTERM);
  EXPECT_TRUE(server.HasEnded());
  EXPECT_EQ(server.ExitStatus(), 0);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "data/server.db-wal")) << "the database was closed";
}

TEST_F(ProcessTest, KeepsItsAccountThoughKilledAndChangesItsPrefix) {
  std::set<std::string> paths, texts;
  for (const bool logsIn : {false, true, true}) {
    ChildServer server(Embedded());
    const std::string root = server.Root();
    paths.insert(Split(root).path);
    texts.insert(ReadFile(account_));
    EXPECT_THAT(logsIn ? Login(root, account_) : "OK_", StartsWith("OK_"));
    server.Signal(SIGKILL);
    EXPECT_TRUE(server.HasEnded());
  }
  EXPECT_THAT(paths, SizeIs(3));
  EXPECT_THAT(texts, ElementsAre(MatchesRegex("Pno=[0-9]{10}\r\nuserPW=[0-9A-Za-z]{12}\r\n")));
}

TEST_F(ProcessTest, MakesTheAccountOfAFileWhoseDatabaseWasNeverWritten) {
  std::filesystem::create_directory(folder_ / "config");
  WriteFile(account_, "Pno=4711\r\nuserPW=abcdefgh1234\r\n");
  ChildServer server(Embedded());
  EXPECT_EQ(Login(server.Root(), account_), "OK_4711");
}

TEST_F(ProcessTest, TheProgramsOwnServerSetsADamagedDatabaseAsideAndGoesOn) {
  const auto database = folder_ / "data/server.db";
  {
    ChildServer server(Embedded());
    ASSERT_THAT(Login(server.Root(), account_), StartsWith("OK_"));
    server.CloseInput();
    ASSERT_TRUE(server.HasEnded());
  }
  const std::string whole = ReadFile(database);
  std::string torn = whole;
  torn.replace(torn.size() / 2, torn.size() / 2, std::string(torn.size() / 2, 'x'));
  int aside = 0;
  for (const std::string& damaged : {std::string(5000, 'x'), whole.substr(0, 1000), torn}) {
    WriteFile(database, damaged);
    ChildServer server(Embedded());
    EXPECT_THAT(Login(server.Root(), account_), StartsWith("OK_"));
    server.CloseInput();
    EXPECT_TRUE(server.HasEnded());
    EXPECT_EQ(ReadFile(folder_ / ("data/server.db.damaged-" + std::to_string(++aside))), damaged);
  }
}

TEST_F(ProcessTest, MakesTeachersWhoCanLogIn) {
  const std::string data = folder_ / "data";
  std::filesystem::create_directory(data);
  const struct {
    std::vector<std::string> words;
    const char *input, *says;
  } cases[] = {
      {{"add", "lin", "林美玲"}, "short\n", "must have 8 to 200 bytes"},
      {{"add", "lin", "林美玲"}, "", "must have 8 to 200 bytes"},
      {{"add", "lin", "林美玲"}, "first password\r\n", ""},
      {{"add", "lin", "Lin"}, "another one\n", "exists already"},
      {{"password", "wu"}, "another one\n", "there is no teacher \"wu\""},
      {{"password", "lin"}, "second password\n", ""},
      {{"add", "a/b", "Lin"}, "", "a login has"},
      {{"add", "wu", " "}, "", "a name has"},
      {{"add", "wu"}, "", "needs 2 more words"},
      {{"remove", "lin"}, "", "unknown word \"remove\""},
      {{"list"}, "", "lin\t林美玲\n"},
  };
  for (const auto& [words, input, says] : cases) {
    std::vector<std::string> all = {"teacher", "--data", data};
    all.insert(all.begin() + 1, words.begin(), words.end());
    const auto run = RunProgram({.program = SERVER_PROGRAM, .arguments = all}, input);
    EXPECT_THAT(run.output + run.errors, HasSubstr(says));
  }
  const auto teacher = server::OpenSqliteSchoolStore(data + "/server.db")->FindTeacher("lin");
  EXPECT_TRUE(server::PasswordFits("second password", teacher->passwordHash));
}

TEST_F(ProcessTest, ANewSchoolRequiresTokensAndNoOtherServer) {
  const auto start = [&](const std::string& name, bool isEmbedded) {
    std::vector<std::string> words = {"--data", folder_ / name, "--engine-data", folder_ / "engine"};
    if (isEmbedded) words.insert(words.begin(), "--embedded");
    ChildServer server(words);
    const Address address = Split(server.Root());
    const auto answer = httplib::Client(address.host)
                            .Post(address.path + "p_update_useract.asp", "key=zorbelquinter&pno=S1&act=collo",
                                  "text/xml; charset=big5");
    server.Signal(SIGTERM);
    EXPECT_EQ(server.ExitStatus(), 0);
    return answer->body;
  };
  const auto settings = [&](const std::string& name) {
    return std::filesystem::exists(folder_ / name / "server.set") ? ReadFile(folder_ / name / "server.set")
                                                                  : "";
  };
  for (const char* name : {"killed", "wanted", "unwanted", "old", "own required"}) {
    std::filesystem::create_directory(folder_ / name);
  }
  WriteFile(folder_ / "killed/server.set", "requireToken=1\r\n");  // before there was a database
  WriteFile(folder_ / "wanted/server.set", "schoolCode=1\n");
  WriteFile(folder_ / "unwanted/server.set", "requireToken=0\n");
  WriteFile(folder_ / "own required/server.set", "requireToken=1\n");
  server::OpenAccountStore(folder_ / "old/server.db");
  const struct {
    const char* name;
    bool isEmbedded;
    const char *word, *settings;
  } cases[] = {{"new", false, "ERR_LOGIN", "requireToken=1\r\n"},
               {"killed", false, "ERR_LOGIN", "requireToken=1\r\n"},
               {"wanted", false, "ERR_LOGIN", "schoolCode=1\r\nrequireToken=1\r\n"},
               {"unwanted", false, "ERR_NOTFOUND", "requireToken=0\n"},
               {"old", false, "ERR_NOTFOUND", ""},
               {"own", true, "ERR_NOTFOUND", ""},
               {"own required", true, "ERR_NOTFOUND", "requireToken=1\n"}};
  for (const auto& [name, isEmbedded, word, text] : cases) {
    for (int run = 0; run < 2; ++run) {
      EXPECT_EQ(start(name, isEmbedded), word) << name;
      EXPECT_EQ(settings(name), text) << name;
    }
  }
  // A command of the owner may come before the first start.
  std::filesystem::create_directory(folder_ / "commanded");
  RunProgram({.program = SERVER_PROGRAM, .arguments = {"teacher", "list", "--data", folder_ / "commanded"}});
  EXPECT_EQ(start("commanded", false), "ERR_LOGIN");
}

TEST_F(ProcessTest, GivesAPupilANewPasswordAndForgetsComputers) {
  const std::string data = folder_ / "data";
  std::filesystem::create_directory(data);
  const auto store = server::OpenAccountStore(data + "/server.db");
  store->PutAccount("S1", "");
  const auto put = [&] {
    store->PutToken("S1", *store->PasswordHash("S1"), "a", "2026-11-05");
    store->PutToken("S1", *store->PasswordHash("S1"), "b", "2026-11-06");
    store->UseToken("a", "2026-11-07");
  };
  put();
  const std::string both =
      "2 computers\nsince 2026-11-05, last used 2026-11-07\nsince 2026-11-06, last used 2026-11-06\n";
  const struct {
    std::vector<std::string> words;
    std::string input, says;
    int status;
  } cases[] = {
      {{"computers", "S-1"}, "", both, 0},
      {{"password", "S1"}, "abc\n", "must have 4 to 64 letters", 1},
      {{"password", "S1"}, "abcd \n", "no blank at either end", 1},
      {{"computers", "S1"}, "", both, 0},
      {{"forget", "S1"}, "", "2 computers have to log in again\n", 0},
      {{"computers", "S1"}, "", "0 computers\n", 0},
      {{"password", "S2"}, "abcd\n", "there is no account \"S2\"", 1},
      {{"forget", "S2"}, "", "there is no account \"S2\"", 1},
      {{"computers"}, "", "needs an account number", 64},
      {{"remove", "S1"}, "", "unknown word \"remove\"", 64},
  };
  for (const auto& [words, input, says, status] : cases) {
    std::vector<std::string> all = {"pupil", "--data", data};
    all.insert(all.begin() + 1, words.begin(), words.end());
    const auto run = RunProgram({.program = SERVER_PROGRAM, .arguments = all}, input);
    EXPECT_EQ(run.status, status) << says;
    EXPECT_THAT(run.output + run.errors, HasSubstr(says));
  }
  put();
  EXPECT_EQ(store->Tokens("S1").size(), 2U);
  RunProgram({.program = SERVER_PROGRAM, .arguments = {"pupil", "password", "S1", "--data", data}},
             "rain 7842\r\n");
  EXPECT_TRUE(server::PasswordFits("rain 7842", *store->PasswordHash("S1")));
  EXPECT_EQ(store->Tokens("S1").size(), 0U);
}

TEST_F(ProcessTest, SaysInOneLineWhyItCannotStart) {
  const RunningServer other;
  const std::string host = Split(other.Root()).host;
  const std::string taken = host.substr(host.rfind(':') + 1);
  const std::string data = folder_ / "data";
  const std::string engine = folder_ / "engine";
  const std::string file = folder_ / "file";
  WriteFile(file, "Pno=a/b\r\nuserPW=x\r\n");
  std::filesystem::create_directory(folder_ / "damaged");
  WriteFile(folder_ / "damaged/server.db", std::string(3000, 'x'));

  const struct {
    std::vector<std::string> words;
    int status;
    const char* says;
  } cases[] = {
      {{}, 64, "--data is missing"},
      {{"--embedded", "--data"}, 64, "--data needs a value"},
      {{"teacher"}, 64, "add, password or list is missing"},
      {{"pupil"}, 64, "password, computers or forget is missing"},
      {{"pupil", "computers", "S1"}, 64, "--data is missing"},
      {{"teacher", "list"}, 64, "--data is missing"},
      {{"teacher", "list", "--data", data + "/none"}, 1, "there is no folder"},
      {{"--embedded", "--data", data, "--port", "80"}, 64, "--embedded chooses"},
      {{"--port", "80x", "--data", data}, 64, "\"80x\" is no port"},
      {{"--port", "65536", "--data", data}, 64, "is no port"},
      {{"--data", data, "--prefix", "a b"}, 64, "--prefix"},
      {{"--data", data, "--speed"}, 64, "unknown word \"--speed\""},
      {{"--data", file + "/data", "--engine-data", engine}, 1, "cannot make the folder"},
      {{"--data", folder_ / "damaged", "--engine-data", engine}, 1, "cannot use the database: "},
      {{"--data", data, "--engine-data", file}, 1, "the language data was not found in"},
      {{"--data", data, "--engine-data", engine, "--account", file}, 1, "names no account number"},
      {{"--data", data, "--engine-data", engine, "--account", file + "/x"}, 1, "cannot"},
      {{"--data", data, "--engine-data", engine, "--port", taken}, 1, "cannot listen on 127.0.0.1"},
      {{"--data", data, "--engine-data", engine, "--listen", "999.1.1.1"}, 1, "cannot listen on 999.1.1.1"},
  };
  for (const auto& [words, status, says] : cases) {
    const auto run = RunProgram({.program = SERVER_PROGRAM, .arguments = words});
    EXPECT_EQ(run.status, status) << says;
    EXPECT_THAT(run.errors, AllOf(StartsWith("marovane-server: "), HasSubstr(says)));
    EXPECT_EQ(run.output, "");
  }
}

}  // namespace
