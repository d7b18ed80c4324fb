// The word helper with a scripted server.
#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "base/cp950.h"
#include "core/key_value_file.h"
#include "platform/window.h"
#include "tests/core/core_fixture.h"
#include "wordhelper/collocation.h"

namespace marovane {

class CollocationTest : public CoreTest {
 protected:
  static constexpr const char* kSites =
      "字典||cn||cn||http://c/?q=<String2chk><@>例句||en||EN||http://e/<String2chk>/<String2chk><@>"
      "Corpus||en||cn||http://k/中/<String2chk>";

  CollocationTest() {
    app.gAccountNo = "12-34 5";
    app.gUseWebEngineWbank = true;
    auto& http = machine.http;
    http.Route("p_getconn.asp", "ONLINE");
    http.Route("p_all_webengine_get.asp", "OK_http://engine/");
    http.Route("p_passWebEngine_conn.asp", "ONLINE");
    http.Route("p_update_useract.asp", "OK_");
    http.Route("p_getwebhelper.asp", base::ToCp950(kSites));
  }

  FrmCollocation& Helper() { return *frmCollocation; }
  void TearDown() override { EXPECT_EQ(machine.user.Expected(), 0U) << "all expected messages were shown"; }
  /// Turns to a tab and types into a box on it.
  void TypeOnTab(int tab, TextBox& box, const std::string& text) {
    Helper().picTabs_Click(tab);
    machine.user.Type(box, text);
  }
  /// The notices of use that the server got, each as its word.
  std::vector<std::string> Acts() {
    std::vector<std::string> acts;
    for (const auto& body : machine.http.Bodies("p_update_useract.asp")) {
      EXPECT_THAT(body, ::testing::StartsWith("key=zorbelquinter&pno=12345&act="));
      acts.push_back(body.substr(body.rfind('=') + 1));
    }
    return acts;
  }
  bool ShowsResults() {
    auto& helper = Helper();
    return helper.cboCollect.Visible && helper.lblCollectMessage.Visible && helper.lblSourceCap.Visible &&
           helper.cboWebSource(2).Visible && helper.picButtons(2).Visible;
  }
  std::filesystem::path SourcesFile() { return app.gTempDir + "/marovane/websource.set"; }

  Window<FrmCollocation> frmCollocation{program};
};

}  // namespace marovane
