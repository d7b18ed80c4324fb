#include "protocol/lists.h"

#include <gtest/gtest.h>

#include "tests/protocol/random_text.h"

namespace protocol {
namespace {

TEST(Lists, ReadWhatIsWritten) {
  test::RandomText random(5);
  const auto without = [&random](std::string_view signs) {
    std::string text = random.Stored();
    std::erase_if(text, [signs](char sign) { return signs.find(sign) != std::string_view::npos; });
    return text;
  };
  for (int round = 0; round < 300; ++round) {
    std::vector<Assignment> work(random.Below(4));
    for (auto& each : work)
      each = {"w" + random.Number(), random.Below(2) == 0, random.Number(),
              without("#<"),         random.Number(),      random.Below(2) == 0};
    ASSERT_EQ(ParseAssignments(EncodeAssignments(work)), work);
    std::vector<Setting> settings(random.Below(4));
    for (auto& each : settings) each = {without("$:\r\n"), random.Stored()};
    ASSERT_EQ(ParseSettings(EncodeSettings(settings)), settings);
    std::vector<OutsideSite> sites(random.Below(4));
    for (auto& each : sites) each = {without("|<"), random.Flag("ce"), random.Flag("ce"), without("|<")};
    ASSERT_EQ(ParseOutsideSites(EncodeOutsideSites(sites)).sites, sites);
  }
}

/// What has come, and how the same list is written.
TEST(Lists, ReadAssignmentsOfOtherServers) {
  const std::pair<const char*, const char*> cases[] = {
      {"OK_w1#N#2026/11/30#我的家", "OK_w1#N#2026/11/30#我的家##"},
      {"OK_w1#Y#soon#A##Y<@>w2#N##B#2026/11/6#", "OK_w1#Y#soon#A##Y<@>w2#N##B#2026/11/6#"},
      {"OK_<@>w1#N#d#A<@><@>", "OK_w1#N#d#A##"},
      {"OK_w1#N#d#Say OK_ now<@>OK_w2#N#d#B", "OK_w1#N#d#Say  now##<@>w2#N#d#B##"},
      {"OK_w1<@>#N#d#A<@>w2#N#d#<@>w3#y#d#C#c#y#more", "OK_w2#N#d###<@>w3#N#d#C#c#"},
      {"OK_w1#N#d<@>w2#N<@>#<@>###<@>w3#N##", "OK_w3#N####"},
      {"OK", "OK_"}};
  for (const auto& [reply, list] : cases)
    EXPECT_EQ(EncodeAssignments(ParseAssignments(reply).value()), list) << reply;
  for (const char* reply : {"", "ERR_NOTFOUND", "w1#N#d#A", "<html>OK_w1#N#d#A"})
    EXPECT_EQ(ParseAssignments(reply), std::nullopt) << reply;
}

TEST(Lists, ReadSitesOfOtherServers) {
  const struct {
    const char *reply, *list;
    bool isFaulty;
  } cases[] = {{"A#CN#En#u<String2chk>", "A||cn||en||u<String2chk>", false},
               {"A||cn||cn||h/#<String2chk><@>B||X||||v", "A||cn||cn||h/#<String2chk><@>B||x||||v", false},
               {"A#b#c#u||v", "", true},
               {"A#b#c#u#more", "A||b||c||u", false},
               {"A#b#c#u<@><@>B#b#c#v", "A||b||c||u", false},
               {"A#b#c<@>B#b#c#v", "B||b||c||v", true},
               {"<html>404</html>", "", true}};
  for (const auto& [reply, list, isFaulty] : cases) {
    const OutsideSites read = ParseOutsideSites(reply);
    EXPECT_EQ(EncodeOutsideSites(read.sites), list) << reply;
    EXPECT_EQ(read.isFaulty, isFaulty) << reply;
  }
}

}  // namespace
}  // namespace protocol
