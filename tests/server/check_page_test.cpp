// The check of a sentence: the reply's fields, its result page, and many checks at once.
#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <thread>

#include "base/text.h"
#include "engine/tolvex.h"
#include "server/store/page_store.h"
#include "tests/server/running_server.h"

namespace {

using namespace ::testing;

std::string Check(const RunningServer& server, const std::string& sentence) {
  return server.Ask("p_passWebEngine.asp", "&pno=1&pnomd5=x&checksum=x&p1=beta&p2=0&p3=074148&cidx=0&s=" +
                                               base::Replace(sentence, " ", "%20"));
}

std::vector<std::string> Fields(const RunningServer& server, const std::string& sentence) {
  return base::Split(Check(server, sentence), "#");
}

TEST(CheckPage, AnswersEachVerdictInItsFields) {
  const RunningServer server(Scripted([](std::string_view sentence) {
    tolvex::Judgement judgement;
    judgement.col_suggestion = "go to school,go home";
    judgement.syn_suggestion = "0";
    if (sentence == "Right.") return judgement;
    judgement.verdict = sentence == "Watch." ? tolvex::Verdict::kWatch : tolvex::Verdict::kErrors;
    judgement.errcode = "VB01";
    judgement.marked = "*" + std::string(sentence) + "*";
    return judgement;
  }));
  const auto path = MatchesRegex("pages/[0-9a-f]{32}\\.htm");
  EXPECT_THAT(Fields(server, "Right."), ElementsAre("OK_0", "0", path, "go to school<@>go home", "0"));
  EXPECT_THAT(Fields(server, "Watch."), ElementsAre("OK_2", "VB01", path, "*Watch.*"));
  EXPECT_THAT(Fields(server, "He go."), ElementsAre("OK_1", "VB01", path, "*He go.*"));
  EXPECT_THAT(Fields(server, " A & b = c + d "), ElementsAre("OK_1", "VB01", path, "*A & b = c + d*"));
  EXPECT_THAT(Fields(server, "No # 5"), ElementsAre("OK_1", "VB01", path, "*No \xA1\xAD 5*"));
}

TEST(CheckPage, ServesTheResultPageUnderItsPath) {
  const RunningServer server;
  const std::string wrong = Fields(server, "he goes.")[2];
  const std::string right = Fields(server, "He goes.")[2];
  EXPECT_NE(wrong, right);
  const auto page = server.Get(right);
  EXPECT_EQ(page->status, 200);
  EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=big5");
  EXPECT_THAT(page->body, HasSubstr("\xA5\xBB\xA5\x79\xA4\x6C\xA8\x53\xA6\xB3")) << "本句子沒有 in Big5";
  EXPECT_THAT(server.Get(wrong)->body, HasSubstr("he goes."));
  EXPECT_EQ(server.Get("pages/00000000000000000000000000000000.htm")->status, 404);
}

TEST(PageStore, KeepsTheNewestPages) {
  server::PageStore store(3);
  std::vector<std::string> pages{"1", "2", "3", "4", "5"};
  for (auto& page : pages) page = store.Keep(page);
  for (auto& page : pages) page = store.Find(page).value_or("gone");
  EXPECT_THAT(pages, ElementsAre("gone", "gone", "3", "4", "5"));
}

TEST(CheckPage, ListensWhileTheEngineLoads) {
  std::promise<void> loaded;
  const RunningServer server([&]() -> server::SharedEngine::Judge {
    loaded.get_future().wait();
    return JudgeFirstLetter;
  });
  EXPECT_EQ(server.Ask("p_passWebEngine_conn.asp", ""), "ONLINE");
  auto reply = std::async(std::launch::async, [&] { return Check(server, "he goes."); });
  EXPECT_EQ(server.Ask("p_getversion.asp", "&type=mrv"), "1.0.0");
  loaded.set_value();
  EXPECT_THAT(reply.get(), StartsWith("OK_1#PU01#"));
}

TEST(CheckPage, SaysWhenThereIsNoEngine) {
  const RunningServer server([]() -> server::SharedEngine::Judge { throw std::runtime_error("no tables"); });
  EXPECT_EQ(Check(server, "He goes."), "ERR_ENGINE");
  EXPECT_EQ(server.Ask("p_passWebEngine_conn.asp", ""), "ERR_ENGINE");
  EXPECT_THAT(server.Ask("p_getconn.asp", ""), StartsWith("ONLINE "));
}

/// The reply without the path, which is new each time.
std::string Verdict(const RunningServer& server, const std::string& sentence) {
  auto fields = Fields(server, sentence);
  if (fields.size() > 2) fields[2].clear();
  return testing::PrintToString(fields);
}

TEST(CheckPage, EightLearnersAtOnceGetTheSameVerdicts) {
  const RunningServer server(server::LoadTolvex(tolvex::FindDataDir()));
  const std::vector<std::string> sentences = {"he goes to school.",        "He goes to school every day.",
                                              "He go to school everyday.", "She don't like apples.",
                                              "There is many students.",   "I recieve your letter."};
  std::vector<std::string> alone;
  for (const std::string& sentence : sentences) alone.push_back(Verdict(server, sentence));
  EXPECT_THAT(alone[0], HasSubstr("OK_1")) << "the engine judges";
  std::atomic<int> same = 0;
  std::vector<std::thread> learners;
  for (std::size_t learner = 0; learner < 8; ++learner) {
    learners.emplace_back([&, learner] {
      for (std::size_t i = 0; i < 30; ++i) {
        const std::size_t which = (learner + i) % sentences.size();
        if (Verdict(server, sentences[which]) == alone[which]) ++same;
      }
    });
  }
  for (std::thread& learner : learners) learner.join();
  EXPECT_EQ(same, 8 * 30);
}

}  // namespace
