// From one version to the next and back again, also when the way is cut off.
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <atomic>
#include <csignal>
#include <cstdlib>

#include "tests/updater/updater_fixture.h"

namespace updater {

namespace {

using namespace ::testing;

class SwitchTest : public InstalledTest {
 protected:
  std::vector<std::string> Versions() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(installation / "versions")) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }
  std::string InProgram(const std::string& name) const {
    return ReadFile(installation / "current/share/marovane" / name);
  }
};

TEST_F(SwitchTest, NewVersionKeepsTheSettingsOfTheInstallation) {
  Put(installation / "current/share/marovane/installation.set", "serverRoot=http://school/\r\n");
  fs::create_directories(installation / "versions/.new/left by a kill");
  Publish({.version = "1.1.0", .page = "new page"});
  const base::RunResult run = RunUpdater("mrv_updater");
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(Current(), "1.1.0");
  EXPECT_EQ(InProgram("ui/page.htm"), "new page");
  EXPECT_EQ(InProgram("installation.set"), "serverRoot=http://school/\r\n");
  EXPECT_EQ(InProgram("update.key"), ReadFile(key.string() + ".pub"));
  EXPECT_THAT(Versions(), ElementsAre("1.0.0", "1.1.0"));
  EXPECT_EQ(Note(), "");
  EXPECT_EQ(Shell((installation / "current/bin/marovane-terminal").string() + " --version").output,
            "Marovane 1.1.0\n");
}

TEST_F(SwitchTest, OneVersionIsKeptForTheWayBackAndForth) {
  Publish({.version = "1.1.0"});
  ASSERT_EQ(RunUpdater("mrv_updater").status, 0);
  StartInstalled();
  Publish({.version = "1.2.0"});
  ASSERT_EQ(RunUpdater("mrv_updater").status, 0);
  EXPECT_THAT(Versions(), ElementsAre("1.1.0", "1.2.0"));
  StartInstalled();
  for (const char* const version : {"1.1.0", "1.2.0"}) {
    EXPECT_EQ(Shell(updaterCopy.string() + " mrv_rollback").status, 0);
    EXPECT_EQ(Current(), version);
  }
}

TEST_F(SwitchTest, OnlyWhatChangedIsFetchedAndReinstallingFetchesAll) {
  Publish({.version = "1.1.0", .page = "new page"});
  UpdateServer server(FolderServer(www.string()));
  ASSERT_EQ(RunUpdater("mrv_updater", server.Host()).status, 0);
  EXPECT_EQ(server.requests, 3) << "the list, the program and its page";
  StartInstalled();
  Put(installation / "current/share/marovane/same.txt", "what a learner wrote into it");
  server.requests = 0;
  ASSERT_EQ(RunUpdater("mrv_reinstaller", server.Host()).status, 0);
  EXPECT_EQ(server.requests, 4);
  EXPECT_EQ(Current(), "1.1.0-2");
  EXPECT_EQ(InProgram("same.txt"), "the same in all versions");
}

TEST_F(SwitchTest, CutDownloadsAndForeignPagesChangeNothing) {
  Publish({.version = "1.1.0", .page = std::string(200'000, 'x')});
  const auto installed = Installed();
  UpdateServer server(FolderServer(www.string()));
  const auto cut = [](const httplib::Request& request, httplib::Response& response) {
    if (!request.path.starts_with("/update/files/")) return false;
    response.set_content_provider(200'000, "application/octet-stream",
                                  [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                    return offset == 0 && sink.write("xxxx", 4);
                                  });
    return true;
  };
  const auto missing = [](const httplib::Request&, httplib::Response& response) {
    response.status = 404;
    return true;
  };
  const auto welcome = [](const httplib::Request&, httplib::Response& response) {
    response.set_content("<html>Welcome to this hotel</html>", "text/html");
    return true;
  };
  for (const auto& [spoil, told] : std::initializer_list<std::pair<UpdateServer::Handler, const char*>>{
           {cut, "無法從更新主機完整取得"}, {missing, "404"}, {welcome, "沒有簽章"}}) {
    server.OnRequest(spoil);
    const base::RunResult run = RunUpdater("mrv_updater", server.Host());
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr(told));
    EXPECT_EQ(Installed(), installed) << told;
  }
}

TEST_F(SwitchTest, CertificateThatNobodyVouchesForIsRefused) {
  Publish({.version = "1.1.0"});
  EVP_PKEY* const pair = EVP_RSA_gen(2048);
  X509* const certificate = X509_new();
  X509_gmtime_adj(X509_getm_notBefore(certificate), 0);
  X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
  X509_set_pubkey(certificate, pair);
  auto* const name = X509_get_subject_name(certificate);
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("127.0.0.1"),
                             -1, -1, 0);
  X509_set_issuer_name(certificate, name);
  ASSERT_NE(X509_sign(certificate, pair, EVP_sha256()), 0);
  {
    auto secure = std::make_unique<httplib::SSLServer>(certificate, pair);
    ASSERT_TRUE(secure->is_valid());
    secure->set_mount_point("/update", www.string());
    UpdateServer server(std::move(secure));
    const base::RunResult run = RunUpdater("mrv_updater", "https://" + server.Host());
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("certificate"));
    EXPECT_EQ(server.requests, 0);
  }
  X509_free(certificate);
  EVP_PKEY_free(pair);
  EXPECT_EQ(Current(), "1.0.0");
}

TEST_F(SwitchTest, KilledAtAnyRequestTheOldVersionRunsAndTheNextUpdateWorks) {
  Publish({.version = "1.1.0", .page = "new page"});
  UpdateServer server(FolderServer(www.string()));
  std::atomic<pid_t> id = 0;
  int kills = 0;
  for (int at = 1;; ++at) {
    server.requests = 0;
    server.OnRequest([&id, &server, at](const httplib::Request&, httplib::Response&) {
      id.wait(0);
      if (server.requests == at) kill(id, SIGKILL);
      return false;
    });
    id = 0;
    base::Process updater({.program = updaterCopy,
                           .arguments = {"mrv_updater", server.Host()},
                           .environment = std::vector<std::string>()});
    id = updater.Id();
    id.notify_all();
    const auto status = updater.Wait(std::chrono::minutes{2});
    ASSERT_TRUE(status);
    if (*status == EXIT_SUCCESS) break;
    ASSERT_EQ(*status, 128 + SIGKILL);
    ++kills;
    EXPECT_EQ(Current(), "1.0.0");
    EXPECT_EQ(InProgram("ui/page.htm"), "page");
  }
  EXPECT_EQ(kills, 3) << "at the list and at each of its two new files";
  EXPECT_EQ(Current(), "1.1.0");
}

class RestartTest : public SwitchTest {
 protected:
  RestartTest() {
    before = "env DISPLAY=:99";
    Put(working / "Tessaroon/edition.txt", "XQD\n");
  }
  /// A trace that windows leave when they are started.
  std::string Leave(const std::string& word) const {
    return "echo " + word + " \"$@\" >> " + (home / "started").string();
  }
  std::string Started() const { return ReadFile(home / "started"); }
};

TEST_F(RestartTest, ProgramComesBackInItsEdition) {
  Publish({.version = "1.1.0", .windows = Leave("new")});
  EXPECT_EQ(RunUpdater("mrv_updater").status, 0);
  EXPECT_EQ(Started(), "new XQD\n");
  StartInstalled();
  fs::remove(www / "mrv_updater.list");
  EXPECT_EQ(RunUpdater("mrv_updater").status, 1);
  EXPECT_EQ(Started(), "new XQD\nnew XQD\n") << "also after a refusal";
}

TEST_F(RestartTest, VersionThatFailsAtItsStartGivesWayToTheOldOne) {
  Publish({.version = "1.1.0", .windows = Leave("one")});
  ASSERT_EQ(RunUpdater("mrv_updater").status, 0);
  StartInstalled();
  Publish({.version = "1.2.0", .windows = Leave("two") + "; exit 7"});
  const base::RunResult run = RunUpdater("mrv_updater");
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(Note(), HasSubstr("已經回到原來的版本"));
  EXPECT_EQ(Started(), "one XQD\ntwo XQD\none XQD\n");
  EXPECT_EQ(Current(), "1.1.0");
  EXPECT_THAT(Versions(), ElementsAre("1.1.0"));
}

}  // namespace

}  // namespace updater
