#include "updater/package_list.h"

#include <gmock/gmock.h>

#include "updater/refusal.h"
#include "updater/source.h"

namespace updater {

namespace {

const std::string kDigest(64, 'a');

TEST(PackageList, PathsLeadIntoTheVersionAndNotOut) {
  for (const char* good : {"bin/marovane", "share/a b/中文.htm", "share/..a/b.."})
    EXPECT_TRUE(IsSafePath(good));
  for (const char* bad : {"", "bin", "bin/", "/bin/x", "lib/x", "bin/../x", "share/..", "share/./x",
                          "share//x", "share/x/", "bin/a\nb", "../bin/x", "binx/y"}) {
    EXPECT_FALSE(IsSafePath(bad)) << bad;
  }
  EXPECT_FALSE(IsSafePath("bin/" + std::string(200, 'x')));
}

TEST(PackageList, VersionsCanNameAFolder) {
  for (const char* good : {"1", "1.0.0", "2.81.3"}) EXPECT_TRUE(IsVersion(good));
  for (const char* bad : {"", ".", "..", ".1", "1.", "1..2", "1.0-2", "1/2", "v1", "1 "}) {
    EXPECT_FALSE(IsVersion(bad)) << bad;
  }
}

TEST(PackageList, IsReadAsItWasWrittenAndNothingElseIs) {
  const PackageList list{"1.2.0", {{"bin/a", true, 12, kDigest}, {"share/b c", false, 0, kDigest}}};
  const std::string text = WriteList(list);
  const PackageList read = ReadList(text);
  EXPECT_EQ(WriteList(read), text);
  EXPECT_EQ(read.Length(), 12U);
  const std::string head = "marovane 1\nversion 1.2.0\n";
  const std::string line = "- 1 " + kDigest + " share/x\n";
  ASSERT_EQ(ReadList(head + line).files.size(), 1U);
  for (const std::string& bad :
       {std::string(), head, "marovane 2\nversion 1.2.0\n" + line, "marovane 1\n" + line, head + line + line,
        head + line + "x", head + "d 1 " + kDigest + " share/x\n", head + "- -1 " + kDigest + " share/x\n",
        head + "- 1x " + kDigest + " share/x\n", head + "- 99999999999 " + kDigest + " share/x\n",
        head + "- 1 " + kDigest.substr(1) + " share/x\n",
        head + "- 1 " + std::string(64, 'G') + " share/x\n"}) {
    EXPECT_THROW(ReadList(bad), Refusal) << bad;
  }
}

TEST(Source, HostsAreAskedOverHttpsAndOnlyThisComputerWithout) {
  const struct {
    const char *host, *address;
  } cases[] = {{"updates.example", "https://updates.example/"},
               {"school.example:8443/update", "https://school.example:8443/update/"},
               {"https://updates.example/", "https://updates.example/"},
               {"127.0.0.1:8080/update", "http://127.0.0.1:8080/update/"},
               {"localhost", "http://localhost/"},
               {"[::1]:80", "http://[::1]:80/"},
               {"127.0.0.1:80@updates.example", "https://127.0.0.1:80@updates.example/"},
               {"localhost.example", "https://localhost.example/"},
               {"127.0.0.1.example:80", "https://127.0.0.1.example:80/"}};
  for (const auto& [host, address] : cases) EXPECT_EQ(AddressOf(host), address);
}

}  // namespace

}  // namespace updater
