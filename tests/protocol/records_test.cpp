// The formats in which records go to the server and come back.
#include <gmock/gmock.h>

#include <algorithm>

#include "base/cp950.h"
#include "base/utf8.h"
#include "protocol/digest.h"
#include "protocol/post.h"
#include "protocol/record_form.h"
#include "protocol/server_state.h"
#include "protocol/stream.h"
#include "protocol/unique_id.h"
#include "protocol/wire_text.h"
#include "tests/protocol/random_text.h"

namespace protocol {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StrEq;
using ::testing::ThrowsMessage;

constexpr const char* kId = "9065779560000000000000001";

class RandomRows : public test::RandomText {
 public:
  using RandomText::RandomText;

  Row Next(RecordKind kind) {
    if (kind == RecordKind::kEssay) {
      return EssayRow{Day(), Number(), "w-" + Number(), Flag("NAY"), Stored(), Stored(), Stored()};
    }
    return SentenceRow{
        kind == RecordKind::kRight ? "" : ErrorCode(), Stored(), Day(), Number(), Number(), Flag("N12")};
  }
  Row Next() { return Next(static_cast<RecordKind>(Below(3))); }
  /// "" in one of two cases.
  std::string Id() { return Below(2) == 0 ? "" : ids_.Next({}); }

 private:
  UniqueIds ids_;
  std::string Day() { return "2026-1" + std::to_string(Below(3)) + "-2" + std::to_string(Below(9)); }
  /// Also one that looks like the end of a stream's page.
  std::string ErrorCode() { return (Below(2) == 0 ? "FINISH" : "LASTID:7") + Stored(); }
};

TEST(WireText, ReadsWhatIsWrittenOfEveryCharacter) {
  std::string all;
  for (char32_t sign = 1; sign < 0x11000; ++sign) {
    if (sign < 0xD800 || sign > 0xDFFF) base::AppendUtf8(all, sign);
  }
  const std::string written = WireText(all);
  EXPECT_EQ(PlainText(written), all);
  EXPECT_EQ(written.find_first_of("#<|"), std::string::npos);
  EXPECT_EQ(base::FromCp950(base::ToCp950(written)), written) << "CP950 has all of it";
  test::RandomText random(2);
  for (int i = 0; i < 3000; ++i) {
    const std::string text = random.Any();
    ASSERT_EQ(PlainText(WireText(text)), text);
  }
}

TEST(WireText, IsWrittenAsEver) {
  EXPECT_EQ(WireText("中 a\r\n#1 < | it's 😀é\t"), "中 a\r\n'23'1 '3C' '7C' it'27's '1F600''E9''9'");
  for (const char* other : {"it's '' 'zz' 'D800' '110000' '0000041' '-1' '", "'41"})
    EXPECT_EQ(PlainText(other), other);
  EXPECT_EQ(PlainText("'3C'@> '41"), "<@> '41");
}

TEST(Post, ReadsWhatIsWritten) {
  RandomRows random(3);
  for (int round = 0; round < 300; ++round) {
    std::vector<PostedRow> rows(random.Below(8));
    for (auto& row : rows) {
      row.isDeletion = random.Below(2) == 0;
      row.id = random.Id();
      row.row = random.Next();
    }
    std::string body = BrowserBody({{"pno", random.Stored()}});
    AddRows(body, rows);
    ASSERT_EQ(ParseRows(Form::Browser(body), "2026-12-31"), rows) << body;
  }
}

TEST(Post, IsWrittenAsEver) {
  std::string body;
  AddRows(body, {{true, kId, SentenceRow{"AG01", " He *go*. ", "2026-11-05", "0", "", "N"}},
                 {false, "", EssayRow{"2026-01-09", "7", "w1", "A", "T<@>", "A & b.", "C."}}});
  EXPECT_EQ(
      body,
      "&k1=D&err1=AG01&s1=He+*go*.&d1=2026%2F11%2F5&es1=0&ess1=&ht1=N&id1=9065779560000000000000001"
      "&k2=N&err2=essay&s2=A&d2=2026%2F1%2F9&es2=7&ess2=w1&ht2=T%273C%27%40%3E%3C%40%3EA+%26+b.%3C%40%3EC.");
}

TEST(Post, ReplacesWhatIsNotInUtf8SoThatTheServerTakesTheRest) {
  std::string body;
  AddRows(body, {{false, "", SentenceRow{"", "caf\xE9.", "2026-11-05", "0", "0", "N"}}});
  EXPECT_EQ(std::get<SentenceRow>(ParseRows(Form::Browser(body), "")[0].row).sentence, "caf\uFFFD.");
}

TEST(Post, KnowsNoIdThatIsNotUnique) {
  for (const char* id : {"65779560100001", "", "906577956000000000000000x", "90657795600000000000000011"}) {
    EXPECT_EQ(ParseRows(Form::Browser(std::string("k1=N&ht1=N&id1=") + id), "")[0].id, "") << id;
  }
}

TEST(Post, RefusesNewRowsWithoutTheirFormAndCleansDeletedOnes) {
  const struct {
    const char* row;
    bool isWellFormed;
  } cases[] = {{"&ht1=2&es1=12&ess1=34", true},
               {"&ht1=N&es1=-12&ess1=-34", true},
               {"&err1=AG01&ht1=1&ess1=0", true},
               {"&err1=essay&s1=A&es1=12&ess1=w0b-5_1.f&ht1=<script>", true},
               {"&ht1=N&es1=e1", false},
               {"&ht1=N&ess1=<b>", false},
               {"&ht1=N&ess1=1 2", false},
               {"&ht1=", false},
               {"&ht1=N1", false},
               {"&err1=essay&s1=A&es1=x", false},
               {"&err1=essay&s1=A&ess1=a b", false},
               {"&err1=essay&s1=<b>", false}};
  for (const auto& [row, isWellFormed] : cases) {
    const auto read = [&](const std::string& kind) {
      return ParseRows(Form::Browser("k1=" + kind + row), "");
    };
    if (isWellFormed) {
      EXPECT_EQ(read("N")[0].row, read("D")[0].row) << row;
    } else {
      EXPECT_THROW(read("N"), Refusal) << row;
      const Row cleaned = Cleaned(read("D")[0].row);
      EXPECT_EQ(Cleaned(cleaned), cleaned) << row;
    }
  }
  EXPECT_EQ(Cleaned(EssayRow{"", "1'); alert(1); ('", "<b>", "?", "T", "O", "N"}),
            Row(EssayRow{"", "1alert1", "b", "N", "T", "O", "N"}));
}

TEST(Post, TakesAWrongDayForTodayAndRefusesWhatItCannotStore) {
  const auto read = [](const char* body) { return ParseRows(Form::Browser(body), "2026-12-31"); };
  EXPECT_THAT(read("k1=N&s1=a%01&d1=yesterday&ht1=2&k3=N"),
              ElementsAre(PostedRow{false, "", SentenceRow{"", "a\x01", "2026-12-31", "", "", "2"}}));
  EXPECT_THAT(read("k2=N"), IsEmpty());
  const std::pair<const char*, const char*> refusals[] = {
      {"k1=", "ERR_UNKNOWN_KIND"}, {"k1=N&ht1=N&k2=n", "ERR_UNKNOWN_KIND"}, {"k1=N&s1=%FF", "ERR_BAD_TEXT"}};
  for (const auto& [body, word] : refusals) {
    const char* const text = body;
    EXPECT_THAT([&] { read(text); }, ThrowsMessage<Refusal>(StrEq(word))) << body;
  }
  std::vector<PostedRow> kept(3);
  ParseKept("1:1 3:20", kept);
  EXPECT_THAT((std::vector{kept[0].kept, kept[1].kept, kept[2].kept}), ElementsAre(1U, 0U, 20U));
  for (const char* header : {"", "x", "1", "1:", "0:1", "3:1", "9999999999999999999999:1", "1:x", ":1"}) {
    std::vector<PostedRow> rows(2);
    ParseKept(header, rows);
    EXPECT_EQ(rows, std::vector<PostedRow>(2)) << header;
  }
}

TEST(Stream, ReadsWhatIsWritten) {
  RandomRows random(4);
  for (int round = 0; round < 300; ++round) {
    const auto kind = static_cast<RecordKind>(random.Below(3));
    EXPECT_EQ(KindOfStream(StreamName(kind)), kind);
    std::vector<StreamRow> rows(random.Below(8));
    std::string reply;
    for (auto& row : rows) reply += EncodeRecord(row = {random.Next(kind), random.Id()});
    const std::string nextId = random.Below(2) == 0 ? kNoMore : "17";
    const StreamPage page =
        ParseStreamPage(kind, base::FromCp950(base::ToCp950(reply + EncodePageEnd(nextId))));
    ASSERT_EQ(page.rows, rows) << reply;
    ASSERT_EQ(page.nextId, nextId);
    ASSERT_EQ(ParseStreamPage(kind, reply).nextId, std::nullopt) << "breaks off";
  }
  EXPECT_EQ(KindOfStream("okay"), std::nullopt);
}

TEST(Stream, IsWrittenAsEver) {
  EXPECT_EQ(EncodeRecord({SentenceRow{"FINISH", "It’s # 中.", "2026-11-05", "0", "0", "N"}, ""}),
            "'46'INISH#It’s '23' 中.#2026/11/5#0#0#N<@>");
  EXPECT_EQ(EncodeRecord({SentenceRow{"", "I.", "2026-11-05", "0", "0", "N"}, kId}),
            std::string("#I.#2026/11/5#0#0#N#") + kId + "<@>");
  EXPECT_EQ(EncodeRecord({EssayRow{"2026-11-05", "7", "w1", "Y", "T", "A.", "B."}, ""}),
            "2026/11/5||7||w1||Y||T||A.||B.<@>");
  EXPECT_EQ(EncodePageEnd(kNoMore) + EncodePageEnd("200"), "FINISHLASTID:200");
}

TEST(Stream, OfDeletedRowsPassesOverWhatIsNoId) {
  const GonePage page = ParseGonePage(EncodeGone(kId) + "<b><@>" + EncodeGone(kId) + EncodePageEnd("7"));
  EXPECT_THAT(page.ids, ElementsAre(kId, kId));
  EXPECT_EQ(page.nextId, "7");
  EXPECT_EQ(ParseGonePage(EncodeGone(kId)).nextId, std::nullopt) << "breaks off";
}

TEST(ServerState, IsReadAsItIsWrittenAndNowhereElse) {
  for (const bool isSame : {true, false}) {
    for (const ServerState& state : {ServerState{"a0", "p1", true}, ServerState{"a0", "", false}}) {
      const std::string reply = EncodeComparison(isSame, state);
      EXPECT_EQ(reply.starts_with("OK"), isSame);
      EXPECT_EQ(ParseComparison(reply), state);
    }
  }
  for (const char* reply : {"OK_", "DIFFERENT", "", "OK_##p#Y", "OK_#a#p#?", "<html>#a#p#Y", "OK_#a#p#Y#"}) {
    EXPECT_EQ(ParseComparison(reply), std::nullopt) << reply;
  }
  const Seen seen = ParseSeen(EncodeSeen("a0", "p1"));
  EXPECT_EQ(seen.server + seen.latestPost, "a0p1");
  EXPECT_EQ(ParseSeen("a0").server, "");
}

TEST(UniqueIds, SortByTimeInEveryYearAndWhenTheClockIsSetBack) {
  UniqueIds ids;
  std::vector<std::string> made{"65779560112799"};  // of an older version
  for (const int year : {2026, 2037, 2038, 2200, 1970}) {
    const base::UtcTime now = std::chrono::sys_days{std::chrono::year{year} / 12 / 31};
    for (int i = 0; i < 3000; ++i) made.push_back(ids.Next(now));
  }
  EXPECT_TRUE(std::ranges::is_sorted(made));
  EXPECT_EQ(std::ranges::adjacent_find(made), made.end());
  EXPECT_TRUE(std::ranges::all_of(made.begin() + 1, made.end(), IsUniqueId));
}

TEST(UniqueIds, AreOthersInAnotherRunAtTheSameTime) { EXPECT_NE(UniqueIds().Next({}), UniqueIds().Next({})); }

TEST(Stream, RefusesWhatIsNoRecord) {
  for (const char* reply : {"<html>", "#Room # 5.#2026/11/5#0#0#N<@>FINISH",
                            "#Here.#2026/13/5#0#0#N<@>FINISH", "#Here.##0#0#N<@>FINISH"}) {
    EXPECT_THROW(ParseStreamPage(RecordKind::kRight, reply), base::Error) << reply;
  }
  for (const char* reply : {"", "<@>FINISH", "#Here.#2026/11/5#0#0#N<@>"}) {
    EXPECT_EQ(ParseStreamPage(RecordKind::kRight, reply).nextId, std::nullopt) << reply;
  }
}

class TextRow : public base::DbRow {
 public:
  explicit TextRow(std::vector<std::string> texts) : texts_(std::move(texts)) {}
  int Count() const override { return static_cast<int>(texts_.size()); }
  bool IsNull(int /*column*/) const override { return false; }
  std::int64_t Number(int /*column*/) const override { return 0; }
  std::string_view View(int column) const override { return texts_.at(static_cast<std::size_t>(column)); }

 private:
  std::vector<std::string> texts_;
};

TEST(Digest, IsOfTheFieldsInTheirOrder) {
  const TextRow row({"", "He goes.", "2026-11-05", "0", "0", "N"});
  const std::string known = "2026-05-09 9105e911a6021eff";
  EXPECT_EQ(EncodeRecordsSince("2026-05-09", HashOf(row)), known);
  const TextRow loose({"", " He goes.  ", "2026-11-05", "0", " 0", "N"});
  EXPECT_EQ(HashOf(loose), HashOf(row));
  EXPECT_NE(HashOf(TextRow({"", "He goes.", "2026-11-05", "00", "", "N"})), HashOf(row));
  EXPECT_EQ(DayOfRecordsSince(known), "2026-05-09");
  EXPECT_EQ(DayOfRecordsSince("2026-05-09"), "");
}

TEST(Digest, LeavesOutWhatIsNotTheSameOnAllComputers) {
  EXPECT_EQ(NewestDigest(" 12 ", "It’s a 國中 student.", ""), NewestDigest("12", "Itsa國中student.", ""));
  EXPECT_EQ(NewestDigest("", "中", "a"), "f032159fb5b8e6673d463cde150bfae5") << "MD5 of A4 E5";
}

}  // namespace
}  // namespace protocol
