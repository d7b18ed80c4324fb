// Pages of the word helper, with the real word bank.
#include <gmock/gmock.h>

#include "base/cp950.h"
#include "server/services/settings.h"
#include "tests/server/running_server.h"

namespace {

using namespace ::testing;

TEST(WordPages, AnswerQueriesAndTranslate) {
  const RunningServer server;
  const struct {
    const char *page, *fields, *reply;
  } cases[] = {
      {"p_passWebEngine_wbank.asp", "&para=rain,CNJ", "^OK_.*heavy rain"},
      {"p_passWebEngine_wbank.asp", "&para=happy%2CSJ", "^OK_.*glad"},
      {"p_passWebEngine_wbank.asp", "&para=RAIN,CNV", "^OK_.+<@>"},
      {"p_passWebEngine_wbank.asp", "&para=xqzzv,CNV", "^OK_$"},
      {"p_passWebEngine_wbank.asp", "&para=rain,XXX", "^OK_$"},
      {"p_passWebEngine_wbank.asp", "&para=a&b=c,CNV", "^OK_$"},
      {"p_passWebEngine_wbank.asp", "&para=rain", "^OK_$"},
      {"p_passWebEngine_wbank.asp", "", "^ERR_MISSING_FIELD$"},
      {"p_com_translate.asp", "&ls=zh-TW&q=我喜歡下雨天", "^OK#.*rain"},
      {"p_com_translate.asp", "&ls=zh-TW&q=%20", "^ERR_MISSING_FIELD$"},
      {"p_com_translate.asp", "&ls=fr&q=我", "^ERR_UNKNOWN_LANGUAGE$"},
      {"p_com_translate.asp", "&q=我", "^ERR_MISSING_FIELD$"},
  };
  for (const auto& [page, fields, reply] : cases) {
    EXPECT_THAT(base::FromCp950(server.Ask(page, fields)), ContainsRegex(reply)) << fields;
  }
  EXPECT_EQ(server.Ask("p_com_translate.asp", "&ls=zh-TW&q=" + std::string(2001, 'a')), "ERR_TOO_LONG");
  EXPECT_EQ(server.Ask("p_update_useract.asp", "&pno=1234567890&act=chn2eng"), "OK_");
}

TEST(WordPages, SitesOfAFreshServerMakeFourFieldsEach) {
  const RunningServer server;
  const std::string reply = base::FromCp950(server.Ask("p_getwebhelper.asp", ""));
  const auto sites = protocol::ParseOutsideSites(reply).sites;
  EXPECT_GE(sites.size(), 4U);
  EXPECT_EQ(protocol::EncodeOutsideSites(sites), reply);
  for (const auto& site : sites) {
    EXPECT_THAT(site.name, Not(HasSubstr("?"))) << "Big5 has all of it";
    EXPECT_THAT(site.url, HasSubstr("##String2chk##"));
  }
}

TEST(WebSources, OwnerWritesThem) {
  const TempFolder folder;
  const auto file = folder / "sources.set";
  const auto list = [&] {
    return protocol::EncodeOutsideSites(server::ReadServerSettings(folder / "server.set").webSources);
  };
  EXPECT_NE(list(), "") << "public ones without a file";
  WriteFile(file, "");
  EXPECT_EQ(list(), "");
  WriteFile(file,
            "; ours\r\n\r\n字典 || cn || cn || http://a/?q=##String2chk##\r\nno site\r\n"
            "A||en||en||ftp://a/\r\nA||en||en\r\nA||en||en||https://b/<@>\r\nB||en||en||https://b/");
  EXPECT_EQ(list(), "字典||cn||cn||http://a/?q=##String2chk##<@>B||en||en||https://b/");
}

}  // namespace
