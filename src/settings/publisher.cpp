#include "settings/publisher.h"

#include <algorithm>

#include "base/text.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/window_shell.h"
#include "platform/event_loop.h"
#include "platform/run_time_error.h"
#include "platform/window_system.h"
#include "protocol/pages.h"

namespace marovane {

namespace {

constexpr const char* kSetupKey = "publisher";

// As a browser shows the address: "http://news/" for "http://news", "http://news/?id=1" for
// "http://news?id=1".
std::string Shown(std::string url) {
  const auto scheme = url.find("://");
  if (scheme == std::string::npos) return url;
  const auto end = std::min(url.find_first_of("/?#", scheme + 3), url.size());
  if (end == url.size() || url[end] != '/') url.insert(end, "/");
  return url;
}

// Address of the news page, "" for none.
std::string NewsPage(Program& program) {
  const std::string reply = TryPost(program, program.app.gServerUrlRoot + protocol::page::kPublisherNews,
                                    {{"softcode", program.app.gProductCode}});
  return reply.starts_with("OK_") ? base::Replace(reply, "OK_", "") : "";
}

}  // namespace

FrmPublisher::FrmPublisher(Program& program) : Form(program.machine, "frmPublisher"), program_(program) {
  cmdOK.Click = [this] { cmdOK_Click(); };
  QueryClose = [this] { cmdOK_Click(); };
  lblNoshow.Click = [this] { chkNoShow.Value = !chkNoShow.Value(); };
  picBG.MouseDown = [this](int button) {
    if (button == kLeftButton) machine.windows.StartDrag(*this);
  };
}

void FrmPublisher::Form_Load() {
  Width = picBG.Width;
  Height = picBG.Height;
  CenterForm(*this);
  lblNoshow.HandCursor = true;
}

void FrmPublisher::cmdOK_Click() {
  if (chkNoShow.Value) WriteSetup(program_, kSetupKey, Shown(webMain.LocationURL));
  Left = kAway;
  machine.loop.DoEvents();
  Unload();
}

void ShowPublisherNews(Program& program, Window<FrmPublisher>& frmPublisher) {
  try {
    const std::string url = NewsPage(program);
    if (url.empty() || Shown(url) == ReadSetup(program, kSetupKey)) return;
    frmPublisher->webMain.Navigate(url);
    frmPublisher->ShowModal();
  } catch (const RunTimeError&) {
    return;  // news is no reason to stop a start
  }
}

}  // namespace marovane
