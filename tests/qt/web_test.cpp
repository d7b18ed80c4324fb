// The browser control on the real engine. Each case starts the engine once, so related facts share one.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <QPushButton>
#include <algorithm>
#include <filesystem>
#include <iterator>

#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/qt/post_server.h"
#include "tests/qt/shown_page.h"

namespace marovane {

using testing::ElementsAre;

namespace {

constexpr char kPage[] =
    "<html><head><meta http-equiv='Content-Type' content='text/html; charset=big5'></head>{}</html>";

/// A page that gives itself a title.
base::Html Titled(const char* title) { return OwnScript(base::Fill("document.title='{}'", title)); }

class WebView : public testing::Test, protected ShownPage {
 protected:
  void Write(const base::Html& body) {
    const int before = completed;
    web.Write(base::Fill(kPage, body));
    machine.Wait([&] { return completed > before; });
  }
  void Navigate(const QString& url) {
    const int before = completed;
    web.Navigate(url.toStdString());
    machine.Wait([&] { return completed > before; });
  }
  // The engine takes input in the widget that it keeps inside its view.
  QWidget& Inner() { return *machine.Widget(web).focusProxy()->focusProxy(); }
  void ClickAt(const QPoint& where) { QTest::mouseClick(&Inner(), Qt::LeftButton, {}, where); }
  /// Clicks again until the engine, which may still lay the page out, has taken it.
  void ClickUntil(const QPoint& where, const std::function<bool()>& isMet) {
    Timer again(machine.loop, 300);
    again.onTick = [&] { ClickAt(where); };
    again.Enabled = true;
    ClickAt(where);
    machine.Wait(isMet);
  }
};

int ParentOf(int process) {
  const std::string status = ReadFile("/proc/" + std::to_string(process) + "/status");
  const auto parent = status.find("PPid:");
  return parent == std::string::npos ? 0 : std::stoi(status.substr(parent + 5));
}

/// Kills the processes that draw this program's pages: the engine's own children have forked them. Gives
/// their number.
int KillRenderers() {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const int process = std::atoi(entry.path().filename().c_str());
    const bool isEngine = ReadFile(entry.path() / "cmdline").find("QtWebEngineProcess") != std::string::npos;
    if (!isEngine || process == 0 || ParentOf(ParentOf(process)) != getpid()) continue;
    count += kill(process, SIGKILL) == 0 ? 1 : 0;
  }
  return count;
}

TEST_F(WebView, EngineIsNotTouchedBeforeAPageIsNeeded) {
  web.Navigate("about:blank");
  machine.loop.DoEvents();
  EXPECT_FALSE(machine.windows.HasWebEngine());
  Write(base::Literal("<body>x</body>"));
  EXPECT_TRUE(machine.windows.HasWebEngine());
}

TEST_F(WebView, CommandsComeByClick) {
  Write(
      base::Literal("<body style='margin:0'><a id='a' href='cmd:show:1' "
                    "style='display:block;height:60px'>link</a></body>"));
  ClickUntil({10, 20}, [&] { return !asked.empty(); });
  EXPECT_EQ(asked.front(), "cmd:show:1");
}

TEST_F(WebView, CommandsComeByScriptAndAddressAndThePageStays) {
  Write(base::Fill(
      "<body><a id='a' href='cmd:show:2'>link</a>{}",
      OwnScript(base::Literal("document.getElementById('a').click();"
                              "setTimeout(function(){document.location.href='rem:errcode:W1';},50);"
                              "setTimeout(function(){document.title='still here';},150);"))));
  machine.Wait([&] { return !titles.empty(); });
  machine.Wait([&] { return asked.size() >= 2; });
  EXPECT_THAT(asked, ElementsAre("cmd:show:2", "rem:errcode:W1"));
  EXPECT_EQ(titles.back(), "still here");
}

TEST_F(WebView, OnlyTrustedPagesGiveCommands) {
  PostServer server;
  server.page =
      "<html><body><script>document.location.href='cmd:del:1';"
      "setTimeout(function(){document.title='done';},200);</script></body></html>";
  Navigate(server.Root() + "outside");
  WaitForTitle("done");
  EXPECT_THAT(asked, testing::Not(testing::Contains("cmd:del:1")));
  machine.ownServer = server.Root();
  Navigate(server.Root() + "inside");
  machine.Wait([&] { return !asked.empty() && asked.back() == "cmd:del:1"; });
}

TEST_F(WebView, OutsidePageCannotReachWrittenOnes) {
  PostServer server;
  Write(Titled("secret"));
  server.page =
      "<html><body><iframe src='marovane://page/1'></iframe><script>"
      "setTimeout(function(){location.href='marovane://page/1';},50);"
      "setTimeout(function(){document.title='outside';},300);</script></body></html>";
  titles.clear();
  Navigate(server.Root());
  WaitForTitle("outside");
  EXPECT_EQ(web.LocationURL(), server.Root().toStdString());
}

// Everything that somebody could write who has broken into a page.
base::Html BrokenInto(const std::string& own, const std::string& other, const std::string& file) {
  return base::Fill(
      "<meta http-equiv='refresh' content='0;url={0}fled'><base href='{0}'><body onload='document.title=1'>"
      "<script>document.title=2</script><a id='script' href='javascript:document.title=3'>x</a>"
      "<a id='out' href='{0}out'>x</a><iframe src='file:///etc/passwd'></iframe>"
      "<iframe srcdoc='<script>top.document.title=4</script>'></iframe>"
      "<form id='form' method='post' action='{0}form'></form><img id='program' "
      "src='file://{1}/btnok_off.gif'>"
      "<img id='above' src='file://{1}/%2e%2e/docs/pictures/main.png'><img id='file' src='file://{2}'>"
      "<img id='server' src='{3}a.svg'><img id='other' src='{0}b.svg'><i id='own' title='{3}'></i>{4}",
      other, MAROVANE_UI_FOLDER, file, own, OwnScript(base::Literal(R"js(
        const at = id => document.getElementById(id);
        const read = address => fetch(address).then(reply => reply.text()).catch(() => 'refused');
        const ask = address => new Promise(done => {
          const request = new XMLHttpRequest();
          request.onload = () => done(request.responseText);
          request.onerror = () => done('refused');
          request.open('GET', address);
          request.send();
        }).catch(() => 'refused');
        window.onload = async () => {
          const found = [await read('file:///etc/passwd'), await ask('file:///etc/passwd'),
                         await read(at('own').title)];
          for (const id of ['program', 'above', 'file', 'server', 'other']) found.push(at(id).naturalWidth);
          for (const id of ['script', 'out']) at(id).click();
          at('form').submit();
          setTimeout(() => { document.title = found.join(' '); }, 300);
        };)js")));
}

TEST_F(WebView, WrittenPagesHaveNoRightsButTheirOwn) {
  PostServer own;
  PostServer other;
  own.page = other.page = "<svg xmlns='http://www.w3.org/2000/svg' width='5' height='5'/>";
  own.type = other.type = "image/svg+xml";
  machine.ownServer = own.Root();
  const std::string file = machine.home / "secret.svg";
  WriteFile(file, own.page.toStdString());
  Write(BrokenInto(own.Root().toStdString(), other.Root().toStdString(), file));
  machine.Wait([&] { return !titles.empty(); });
  EXPECT_THAT(titles, ElementsAre("refused refused refused 88 0 0 5 0"));
  EXPECT_THAT(own.requests, ElementsAre("GET /a.svg"));
  EXPECT_THAT(other.requests, testing::IsEmpty());
}

TEST_F(WebView, FormsPostInTheirPagesCharacterSet) {
  PostServer server;
  machine.ownServer = server.Root();
  web.Write(base::Fill(kPage, base::Fill("<body><form method='post' action='{}p_feedback.asp'>"
                                         "<textarea name='text'>第一行\r\n測試 한</textarea>"
                                         "<input name='plain' value='a b'></form></body>",
                                         server.Root().toStdString())));
  web.SubmitForm(0);  // at once, before the page has been loaded
  machine.Wait([&] { return !server.bodies.isEmpty(); });
  EXPECT_EQ(server.requests.front(), "POST /p_feedback.asp");
  // Big5 of the text by its table; what it cannot write is sent as a reference.
  EXPECT_EQ(server.bodies.front(), "text=%B2%C4%A4%40%A6%E6%0D%0A%B4%FA%B8%D5+%26%2354620%3B&plain=a+b");
}

TEST_F(WebView, InputsAreCurrentWhenAHandlerAsks) {
  Write(base::Literal(
      "<body style='margin:0'><input type='checkbox' id='chk1' style='position:absolute;left:20px;top:20px;"
      "width:40px;height:40px'><input type='radio' id='opt1' name='o' checked><input id='word' value='take'>"
      "</body>"));
  bool isChecked = false;
  std::string word;
  form->cmdGo.Click = [&] {
    isChecked = web.Checked("chk1");
    word = web.Value("word");
  };
  QPushButton& button = static_cast<QPushButton&>(machine.Widget(form->cmdGo));
  button.click();
  EXPECT_FALSE(isChecked);
  EXPECT_EQ(word, "take");
  EXPECT_TRUE(web.Checked("opt1"));
  ClickAt({40, 40});
  Timer again(machine.loop, 50);
  again.onTick = [&] { button.click(); };
  again.Enabled = true;
  machine.Wait([&] { return isChecked; });
}

TEST_F(WebView, EscapeEndsTheWaitForAPageThatIsBusy) {
  Write(OwnScript(
      base::Literal("setInterval(function(){for(const end=Date.now()+3000;Date.now()<end;);},10);")));
  int clicks = 0;
  bool isBrokenOff = false;
  form->cmdGo.Click = [&] { ++clicks; };
  machine.loop.onUnhandledError = [&](const std::exception& error) {
    isBrokenOff = dynamic_cast<const BrokenOff*>(&error) != nullptr;
  };
  Timer user(machine.loop, 50, Timer::Kind::kVisual);
  user.onTick = [&] {
    if (!machine.loop.IsBlocked()) return;
    QTest::keyClick(machine.windows.Find(*form)->Frame().windowHandle(), Qt::Key_Escape);
  };
  user.Enabled = true;
  int attempts = 0;
  for (; !isBrokenOff; ++attempts) QTest::mouseClick(&machine.Widget(form->cmdGo), Qt::LeftButton);
  EXPECT_EQ(clicks, attempts - 1);
}

TEST_F(WebView, PicturesOfTheProgramShowAndChineseIsRight) {
  Write(
      base::Fill("<body background='file:///{0}/bg450.jpg'><img id='i' src='file:///{0}\\btnok_off.gif'>"
                 "<span id='t'>中文</span>{1}",
                 MAROVANE_UI_FOLDER,
                 OwnScript(base::Literal(
                     "window.onload=function(){document.title=document.getElementById('i').naturalWidth+' '+"
                     "document.getElementById('t').textContent.length;}"))));
  machine.Wait([&] { return !titles.empty(); });
  EXPECT_EQ(titles.back(), "88 2");
}

TEST_F(WebView, WrittenPageComesBackWhenItsRendererHasDied) {
  Write(OwnScript(base::Literal("document.location.href='cmd:here'")));
  machine.Wait([&] { return !asked.empty(); });
  asked.clear();
  ASSERT_GT(KillRenderers(), 0);
  machine.Wait([&] { return !asked.empty(); });
  EXPECT_EQ(asked.back(), "cmd:here");
}

TEST_F(WebView, LastOfSeveralPagesStaysHoweverFastTheyFollow) {
  for (const char* const title : {"one", "two", "last"}) {
    web.Navigate("about:blank");
    web.Write(base::Fill(kPage, Titled(title)));
  }
  WaitForTitle("last");
}

TEST_F(WebView, BoxesHaveTheirLookBeforeAnythingIsPainted) {
  Write(base::Fill(
      "<body><input id='c' type='checkbox'>{}",
      OwnScript(base::Literal("document.title=getComputedStyle(document.getElementById('c')).appearance;"))));
  EXPECT_THAT(titles, ElementsAre("none"));
}

TEST_F(WebView, EscapeInAPageIsThatOfItsWindow) {
  Write(Titled("read"));
  int closed = 0;
  form->cmdGo.Click = [&] { ++closed; };
  QTest::keyClick(machine.Widget(web).focusProxy()->focusProxy(), Qt::Key_Escape);
  EXPECT_EQ(closed, 1);
}

/// Requests of a server but for icons, each with its token.
std::vector<std::string> Proved(const PostServer& server) {
  std::vector<std::string> all;
  for (qsizetype i = 0; i < server.requests.size(); ++i) {
    if (server.requests[i].endsWith(".ico")) continue;
    all.push_back((server.requests[i] + " " + server.tokens[i]).trimmed().toStdString());
  }
  return all;
}

TEST_F(WebView, ProofGoesWithTheProgramsOwnNavigationsAlone) {
  PostServer own;
  PostServer other;
  machine.ownServer = own.Root();
  const std::string root = own.Root().toStdString();
  own.page =
      "<html><body><img src='/a.png'><iframe src='/frame'></iframe><script>"
      "if (top == window && location.pathname == '/asked') {"
      "  fetch('/fetched').then(() => { location.href = '/led'; }); }"
      "else { document.title = location.pathname; }</script></body></html>";
  web.Navigate(root + "asked");
  WaitForTitle("/led");
  Navigate(other.Root());
  std::vector<std::string> proved;
  std::ranges::copy_if(Proved(own), std::back_inserter(proved),
                       [](const std::string& request) { return request.ends_with(" secret"); });
  EXPECT_THAT(proved, ElementsAre("GET /asked secret"));
  EXPECT_THAT(Proved(own), testing::IsSupersetOf({"GET /a.png", "GET /frame", "GET /fetched", "GET /led"}));
  EXPECT_THAT(Proved(other), ElementsAre("GET /"));
}

TEST_F(WebView, ProofDoesNotGoWhereARedirectionLeads) {
  PostServer own;
  PostServer other;
  machine.ownServer = own.Root();
  own.movedTo = (other.Root() + "elsewhere").toLatin1();
  for (std::size_t times = 1; times <= 3; ++times) {
    web.Navigate((own.Root() + "moved").toStdString());
    machine.Wait([&] { return Proved(other).size() == times; });
  }
  WaitForTitle("answer");  // the page is shown all the same
  EXPECT_THAT(Proved(own),
              testing::AllOf(testing::SizeIs(3), testing::Each(std::string("GET /moved secret"))));
  EXPECT_THAT(Proved(other),
              testing::AllOf(testing::SizeIs(3), testing::Each(std::string("GET /elsewhere"))));
  machine.Wait([&] { return web.LocationURL() == other.Root().toStdString() + "elsewhere"; });
}

TEST_F(WebView, HistoryGoesBackToWrittenPages) {
  Write(Titled("first"));
  Write(Titled("second"));
  EXPECT_EQ(titles.back(), "second");
  web.GoBack();
  WaitForTitle("first");
  web.GoForward();
  WaitForTitle("second");
}

}  // namespace

}  // namespace marovane
