#include "core/error_report.h"
#include "protocol/page_code.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using namespace ::testing;

class LocalEngineTest : public CheckingTest {
 protected:
  LocalEngineTest() { app.gUseWebEngine = false; }
  /// Half a minute of silence, message 39, and nothing recorded.
  void ExpectTimeout(const std::string& sentence) {
    ExpectMessage(Message::kEngineTimeout);
    const auto before = machine.loop.Elapsed();
    Enter(sentence);
    EXPECT_THAT((machine.loop.Elapsed() - before) / 1ms, AllOf(Ge(30'000), Le(32'000)));
    EXPECT_EQ(app.gVerdict, "STOP");
    EXPECT_THAT(Recorded(), IsEmpty());
    EXPECT_THAT(fakes.frmBrowser.posted, IsEmpty());
    ExpectIdle(sentence);
  }
};

TEST_F(LocalEngineTest, EngineIsStartedOnTheSentence) {
  std::string registry;
  UseLocalEngine([&](const base::ProcessStart& start) {
    registry = machine.realFiles.Read(app.gRegistryFile);
    EXPECT_FALSE(Main().Enabled());
    EXPECT_TRUE(program.frmMessage->IsProgressBox());
    Engine({{"findMistake", "0"}})(start);
  });
  WriteKeys({{"errcode", "OLD"}, {"htm4chk", PagePath()}, {"findMistake", "1"}});
  const auto before = machine.loop.Elapsed();
  Enter("He's here.");
  EXPECT_EQ(machine.loop.Elapsed() - before, 700ms) << "the check ends as soon as the engine does";
  EXPECT_EQ(
      registry,
      "**settings for tolvex=\r\ncol_suggestion=0\r\ncollocationListHtm=\r\nerrcode=0\r\nfindMistake=0\r\n"
      "qcode=0\r\nsentence=He's here.\r\nhtm4chk=\r\nsynChk=\r\ncoursePath=\r\n");
  ASSERT_THAT(machine.processes.started, SizeIs(1));
  const auto& start = machine.processes.started[0];
  EXPECT_EQ(start.program, app.gEngineDir + "tolvex2.exe");
  EXPECT_EQ(start.workingFolder, app.gEngineDir);
  EXPECT_THAT(start.arguments, ElementsAre(AllOf(StartsWith("beta,"), SizeIs(5 + 6))));
}

TEST_F(LocalEngineTest, PageGoesPackedToTheServerAndIsDeleted) {
  const std::string page = "<html>本句子沒有發現錯誤</html>";
  UseLocalEngine(Engine({{"findMistake", "0"}}, page));
  Enter("He goes.");
  EXPECT_THAT(fakes.frmBrowser.posted,
              ElementsAre(AllOf(StartsWith("2 <html>"), HasSubstr("action='http://server/p_decode.asp'"),
                                HasSubstr("name='pno' value='4711'"),
                                HasSubstr("name='code' value='" + protocol::EncodePage(page) + "'"))));
  EXPECT_FALSE(machine.realFiles.FileExists(PagePath()));
}

TEST_F(LocalEngineTest, EngineThatHangsIsKilledByTheNextCheck) {
  machine.processes.Add("other.exe", app.gEngineDir);
  machine.processes.Add("tolvex2.exe", machine.home.Path());
  machine.processes.InstallHanging("tolvex2.exe");
  ExpectTimeout("He goes.");
  EXPECT_THAT(machine.processes.terminated, IsEmpty()) << "not at the time-out";
  UseLocalEngine(Engine({{"findMistake", "0"}}));
  Enter("He goes.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_THAT(machine.processes.terminated, SizeIs(1))
      << "the engine, and neither another program nor that of another learner";
  app.gUseWebEngine = true;
  machine.processes.Add("tolvex2.exe", app.gEngineDir);
  Enter("He goes.");
  EXPECT_THAT(machine.processes.terminated, SizeIs(1)) << "the web engine kills nobody";
}

TEST_F(LocalEngineTest, EngineThatAnswersNothingTimesOut) {
  const auto exchangeOf = [&](const std::string& bytes) -> FakeProcesses::Work {
    return [this, bytes](const base::ProcessStart&) { Put(app.gRegistryFile, bytes); };
  };
  std::string manyLines;
  for (int i = 0; i < 150; ++i) manyLines += "k" + std::to_string(i) + "=v\r\n";
  const std::pair<const char*, FakeProcesses::Work> cases[] = {
      {"no page", {}},
      {"keys without a page", KeysAlone({{"findMistake", "1"}, {"errcode", "A"}})},
      {"a page that is not there", KeysAlone({{"htm4chk", "/nowhere/x.htm"}})},
      {"the word for no page", KeysAlone({{"htm4chk", "nil"}})},
      {"a folder for a page", KeysAlone({{"htm4chk", app.gEngineDir}})},
      {"exchange file beyond its bound", exchangeOf(manyLines)},
      {"exchange file of garbage", exchangeOf("\xFF\xFE\x80")},
      {"exchange file deleted",
       [this](const base::ProcessStart&) { machine.realFiles.Delete(app.gRegistryFile); }},
  };
  for (const auto& [name, work] : cases) {
    SCOPED_TRACE(name);
    UseLocalEngine(work);
    ExpectTimeout("He goes.");
  }
}

TEST_F(LocalEngineTest, DamagedFirstLineDoesNotHideTheAnswer) {
  for (const char* first : {"ngs for tolvex=", "xyz", "=", ""}) {
    SCOPED_TRACE(first);
    UseLocalEngine([&, first](const base::ProcessStart& start) {
      Engine({{"findMistake", "1"}, {"errcode", "A1"}, {"sentence", "He *go*."}})(start);
      std::string text = machine.realFiles.Read(app.gRegistryFile);
      text.replace(0, text.find('\r'), first);
      machine.realFiles.Write(app.gRegistryFile, text, true);
    });
    Enter("He go.");
    EXPECT_EQ(app.gVerdict, "ERRS");
    EXPECT_EQ(Main().lastAnswer.sentence, "He *go*.");
  }
}

TEST_F(LocalEngineTest, EqualsSignInTheSentenceCutsWhatComesBack) {
  UseLocalEngine([&](const base::ProcessStart& start) {
    EXPECT_THAT(machine.realFiles.Read(app.gRegistryFile), HasSubstr("\r\nsentence=a=b=c d\r\n"));
    Engine({{"findMistake", "1"}, {"errcode", "A1"}})(start);
  });
  Enter("a=b=c d");
  EXPECT_THAT(Recorded(), ElementsAre("err|a|A1|2026-11-05|N|0|0|N", "A1|1"));
  EXPECT_EQ(Main().txtInput.Text(), "a=b=c d");
}

TEST_F(LocalEngineTest, MissingEngineIsReportedAndTheWindowComesBack) {
  ReportUnhandledErrors(program);
  std::filesystem::remove(app.gEngineDir + "tolvex2.exe");
  const std::string engineDir = app.gEngineDir;
  app.gEngineDir = "/somewhere/else/";
  ExpectMessage(Message::kUnexpectedError);
  Enter("He goes.");
  EXPECT_EQ(app.gEngineDir, engineDir) << "set to its place again";
  EXPECT_THAT(machine.processes.started, IsEmpty());
  EXPECT_THAT(Recorded(), IsEmpty());
  ExpectIdle("He goes.");
}

TEST_F(LocalEngineTest, FailingRecordIsPassedOver) {
  UseLocalEngine(Engine({{"findMistake", "1"}, {"errcode", "A1"}, {"sentence", "He *go*."}}));
  Enter("He go.");  // opens the database
  FailStatement(1);
  Enter("He go.");
  EXPECT_EQ(app.gVerdict, "ERRS");
  EXPECT_EQ(Main().txtInput.SelColor(), kRed);
  ExpectIdle("He go.");
  EXPECT_THAT(Recorded(), ElementsAre("err|He *go*.|A1|2026-11-05|N|0|0|N", "A1|2"))
      << "a row is missing, the tally not";
}

TEST_F(LocalEngineTest, FailureOfAnyFileStepAfterTheEngineIsPassedOver) {
  for (int step = 1; step <= 6; ++step) {
    SCOPED_TRACE(step);
    UseLocalEngine([&, step](const base::ProcessStart& start) {
      Engine({{"findMistake", "0"}})(start);
      machine.files.fault.Reset();
      machine.files.fault.FailAt(step);
    });
    Enter("He goes.");
    machine.files.fault.Reset();
    EXPECT_EQ(app.gVerdict, "PASS");
    ExpectIdle("He goes.");
  }
  EXPECT_THAT(Recorded(), SizeIs(6));
}

TEST_F(LocalEngineTest, EssaySentenceNeedsNoPage) {
  app.gEssayMode = true;
  for (const char* none : {"NIL", "nil", "Nil"}) {
    UseLocalEngine(
        KeysAlone({{"findMistake", "1"}, {"errcode", "A1"}, {"sentence", "He *go*."}, {"htm4chk", none}}));
    app.gVerdict.clear();
    Pass("He go.");
    EXPECT_EQ(app.gVerdict, "ERRS") << none;
  }
  EXPECT_THAT(machine.processes.started[0].arguments[0], StartsWith("beta,50"));
  UseLocalEngine(Engine({{"findMistake", "0"}}));
  Pass("He goes.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_THAT(fakes.frmBrowser.posted, IsEmpty()) << "an essay shows its pages itself";
  EXPECT_TRUE(machine.realFiles.FileExists(PagePath()));
}

}  // namespace

}  // namespace marovane
