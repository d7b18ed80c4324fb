// The archive of result pages, and the pictures of reports.
#include <gmock/gmock.h>

#include "base/cp950.h"
#include "tests/server/running_server.h"

namespace {

using namespace ::testing;

const std::string kAccount(32, 'a');
const std::string kSentence = "0123456789abcdef0123456789abcdef";
const char* const kRec = "p_all_engine_htm_rec.asp";

std::string Fields(const std::string& pnomd5, const std::string& checksum, const std::string& page) {
  return "&enginever=&pnomd5=" + pnomd5 + "&checksum=" + checksum + "&filestr=" + page;
}

std::string Show(const RunningServer& server, const std::string& pnomd5, const std::string& checksum) {
  const auto answer = server.Get("p_all_engine_htm_show.asp?key=zorbelquinter&pnomd5=" + pnomd5 +
                                 "&checksum=" + checksum + "&enginever=&tid=65948740400002");
  EXPECT_TRUE(answer && answer->status == 200);
  if (!answer) return "";
  EXPECT_THAT(answer->get_header_value("Content-Security-Policy"), StartsWith("sandbox"))
      << "runs no scripts";
  return answer->body;
}

TEST(ArchivePages, BelongToOneAccountAndSentenceAndAreShownWhole) {
  const RunningServer server;
  EXPECT_EQ(
      server.Ask(kRec, Fields(kAccount, kSentence, "%3Cp%3E%E4%B8%80+%2B%0D%0A%09two%F0%9F%98%80%3C%2Fp%3E")),
      "OK_" + kSentence);
  // A body alone gets the head of the page that it comes from.
  EXPECT_THAT(Show(server, kAccount, kSentence),
              AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr(base::ToCp950("<title>句子解析結果</title>")),
                    HasSubstr(".fault {"),
                    EndsWith(base::ToCp950("<body>\n<p>一 +\r\n\ttwo") + "&#128512;</p></body>\n</html>\n")));
  EXPECT_EQ(server.Ask(kRec, Fields(kAccount, kSentence, "<html><BODY class='x'>second</BODY></html>")),
            "OK_" + kSentence);
  EXPECT_EQ(Show(server, kAccount, kSentence), "<html><BODY class='x'>second</BODY></html>");
  const std::string missing = base::ToCp950("伺服器上沒有這個句子的詳細批改內容");
  EXPECT_THAT(Show(server, std::string(32, 'b'), kSentence), HasSubstr(missing));
  EXPECT_THAT(Show(server, kAccount, std::string(32, '0')), HasSubstr(missing));
}

TEST(ArchivePages, RefuseWhatIsWrong) {
  const RunningServer server;
  const std::pair<std::string, const char*> cases[] = {
      {Fields("short", kSentence, "x"), "ERR_BAD_DIGEST"},
      {Fields(kAccount, std::string(32, 'G'), "x"), "ERR_BAD_DIGEST"},
      {Fields(kAccount, kSentence + "0", "x"), "ERR_TOO_LONG"},
      {Fields(kAccount, kSentence, ""), "ERR_MISSING_FIELD"},
      {"&pnomd5=" + kAccount, "ERR_MISSING_FIELD"},
      {Fields(kAccount, kSentence, "a%00b"), "ERR_BAD_TEXT"},
      {Fields(kAccount, kSentence, "%FF"), "ERR_BAD_TEXT"},
      {Fields(kAccount, kSentence, std::string((1 << 20) + 1, 'x')), "ERR_TOO_LONG"},
  };
  for (const auto& [fields, word] : cases) {
    EXPECT_EQ(server.Ask(kRec, fields), word) << fields.substr(0, 120);
  }
  EXPECT_EQ(server.Get("p_all_engine_htm_show.asp?key=wrong")->body, "ERR_WRONG_KEY");
  EXPECT_EQ(server.Get("p_all_engine_htm_show.asp")->body, "ERR_WRONG_KEY");
  EXPECT_EQ(server.Get(kRec)->status, 404);
  EXPECT_EQ(server.Post("p_all_engine_htm_show.asp", "key=zorbelquinter")->status, 404);
}

TEST(Images, OfReportsAreThere) {
  const RunningServer server;
  for (const char* name : {"ico_mrv_ext.gif", "ico_mrv_err.gif", "mrv_icon_warning.gif", "ico_mrv_close.gif",
                           "ico_mrv_closeup.gif", "ico_mrv_hint.gif", "ico_sys_break_point_flash.gif"}) {
    const auto image = server.Get("_images/" + std::string(name));
    ASSERT_TRUE(image && image->status == 200) << name;
    EXPECT_THAT(image->body, StartsWith("GIF89a")) << name;
    EXPECT_EQ(image->body.back(), ';') << name;  // whole
    EXPECT_EQ(image->get_header_value("Content-Type"), "image/gif");
  }
  for (const char* path : {"_images/", "_images/other.gif", "_images/../server.db"}) {
    EXPECT_EQ(server.Get(path)->status, 404) << path;
  }
}

}  // namespace
