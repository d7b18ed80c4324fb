// The browser control on the real engine. Each case starts the engine once, so related facts share one.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/form.h"
#include "platform/web_browser.h"
#include "platform/window.h"
#include "tests/qt/post_server.h"
#include "tests/qt/qt_machine.h"

namespace marovane {

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr char kPage[] =
    "<html><head><meta http-equiv='Content-Type' content='text/html; charset=big5'></head>{}</html>";

/// A page that gives itself a title.
base::Html Titled(const char* title) { return OwnScript(base::Fill("document.title='{}'", title)); }

class FrmPage : public Form {
 public:
  explicit FrmPage(Machine& theMachine) : Form(theMachine, "frmPage") {}
  WebBrowser webMain{*this, "webMain"};
  CommandButton cmdGo{*this, "cmdGo"};
};

struct ShownPage {
  ShownPage() {
    WebBrowser& web = form->webMain;
    web.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
      asked.push_back(url);
      cancel = url.starts_with("cmd:") || url.starts_with("rem:");
    };
    web.DocumentComplete = [this](const std::string&) { ++completed; };
    web.TitleChange = [this](const std::string& title) { titles.push_back(title); };
    form->Show();
    machine.loop.DoEvents();
  }

  void Write(const base::Html& body) {
    const int before = completed;
    form->webMain.Write(base::Fill(kPage, body));
    machine.Wait([&] { return completed > before; });
  }
  void Navigate(const QString& url) {
    const int before = completed;
    form->webMain.Navigate(url.toStdString());
    machine.Wait([&] { return completed > before; });
  }
  // The engine takes input in the widget that it keeps inside its view.
  QWidget& Inner() { return *machine.Widget(form->webMain).focusProxy()->focusProxy(); }
  void ClickAt(const QPoint& where) { QTest::mouseClick(&Inner(), Qt::LeftButton, {}, where); }
  /// Clicks again until the engine, which may still lay the page out, has taken it.
  void ClickUntil(const QPoint& where, const std::function<bool()>& isMet) {
    Timer again(machine.loop, 300);
    again.onTick = [&] { ClickAt(where); };
    again.Enabled = true;
    ClickAt(where);
    machine.Wait(isMet);
  }

  QtMachine machine{MAROVANE_TEST_UI_FOLDER};
  Window<FrmPage> form{[this] { return std::make_shared<FrmPage>(machine.machine); }};
  std::vector<std::string> asked;
  std::vector<std::string> titles;
  int completed = 0;
};

std::string FileText(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

int ParentOf(int process) {
  const std::string status = FileText("/proc/" + std::to_string(process) + "/status");
  const auto parent = status.find("PPid:");
  return parent == std::string::npos ? 0 : std::stoi(status.substr(parent + 5));
}

/// Kills the processes that draw this program's pages: the engine's own children have forked them. Gives
/// their number.
int KillRenderers() {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const int process = std::atoi(entry.path().filename().c_str());
    const bool isEngine = FileText(entry.path() / "cmdline").find("QtWebEngineProcess") != std::string::npos;
    if (!isEngine || process == 0 || ParentOf(ParentOf(process)) != getpid()) continue;
    count += kill(process, SIGKILL) == 0 ? 1 : 0;
  }
  return count;
}

TEST(WebView, EngineIsNotTouchedBeforeAPageIsNeeded) {
  ShownPage page;
  page.form->webMain.Navigate("about:blank");
  page.machine.loop.DoEvents();
  EXPECT_FALSE(page.machine.windows.HasWebEngine());
  page.Write(base::Literal("<body>x</body>"));
  EXPECT_TRUE(page.machine.windows.HasWebEngine());
}

TEST(WebView, CommandsComeByClick) {
  ShownPage page;
  page.Write(
      base::Literal("<body style='margin:0'><a id='a' href='cmd:show:1' "
                    "style='display:block;height:60px'>link</a></body>"));
  page.ClickUntil({10, 20}, [&] { return !page.asked.empty(); });
  EXPECT_EQ(page.asked.front(), "cmd:show:1");
}

TEST(WebView, CommandsComeByScriptAndAddressAndThePageStays) {
  ShownPage page;
  page.Write(base::Fill(
      "<body><a id='a' href='cmd:show:2'>link</a>{}",
      OwnScript(base::Literal("document.getElementById('a').click();"
                              "setTimeout(function(){document.location.href='rem:errcode:W1';},50);"
                              "setTimeout(function(){document.title='still here';},150);"))));
  page.machine.Wait([&] { return !page.titles.empty(); });
  page.machine.Wait([&] { return page.asked.size() >= 2; });
  EXPECT_THAT(page.asked, ElementsAre("cmd:show:2", "rem:errcode:W1"));
  EXPECT_EQ(page.titles.back(), "still here");
}

TEST(WebView, OnlyTrustedPagesGiveCommands) {
  ShownPage page;
  PostServer server;
  server.page =
      "<html><body><script>document.location.href='cmd:del:1';"
      "setTimeout(function(){document.title='done';},200);</script></body></html>";
  page.Navigate(server.Root() + "outside");
  page.machine.Wait([&] { return !page.titles.empty() && page.titles.back() == "done"; });
  EXPECT_THAT(page.asked, testing::Not(testing::Contains("cmd:del:1")));
  page.machine.ownServer = server.Root();
  page.Navigate(server.Root() + "inside");
  page.machine.Wait([&] { return !page.asked.empty() && page.asked.back() == "cmd:del:1"; });
}

TEST(WebView, OutsidePageCannotReachWrittenOnes) {
  ShownPage page;
  PostServer server;
  page.Write(Titled("secret"));
  server.page =
      "<html><body><iframe src='marovane://page/1'></iframe><script>"
      "setTimeout(function(){location.href='marovane://page/1';},50);"
      "setTimeout(function(){document.title='outside';},300);</script></body></html>";
  page.titles.clear();
  page.Navigate(server.Root());
  page.machine.Wait([&] { return !page.titles.empty() && page.titles.back() == "outside"; });
  EXPECT_EQ(page.form->webMain.LocationURL(), server.Root().toStdString());
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

TEST(WebView, WrittenPagesHaveNoRightsButTheirOwn) {
  ShownPage page;
  PostServer own;
  PostServer other;
  own.page = other.page = "<svg xmlns='http://www.w3.org/2000/svg' width='5' height='5'/>";
  own.type = other.type = "image/svg+xml";
  page.machine.ownServer = own.Root();
  const std::string file = page.machine.home / "secret.svg";
  std::ofstream(file) << own.page.toStdString();
  page.Write(BrokenInto(own.Root().toStdString(), other.Root().toStdString(), file));
  page.machine.Wait([&] { return !page.titles.empty(); });
  EXPECT_THAT(page.titles, ElementsAre("refused refused refused 88 0 0 5 0"));
  EXPECT_THAT(own.requests, ElementsAre("GET /a.svg"));
  EXPECT_THAT(other.requests, testing::IsEmpty());
}

TEST(WebView, FormsPostInTheirPagesCharacterSet) {
  ShownPage page;
  PostServer server;
  page.machine.ownServer = server.Root();
  page.form->webMain.Write(base::Fill(kPage, base::Fill("<body><form method='post' action='{}p_feedback.asp'>"
                                                        "<textarea name='text'>第一行\r\n測試 한</textarea>"
                                                        "<input name='plain' value='a b'></form></body>",
                                                        server.Root().toStdString())));
  page.form->webMain.SubmitForm(0);  // at once, before the page has been loaded
  page.machine.Wait([&] { return !server.bodies.isEmpty(); });
  EXPECT_EQ(server.requests.front(), "POST /p_feedback.asp");
  // Big5 of the text by its table; what it cannot write is sent as a reference.
  EXPECT_EQ(server.bodies.front(), "text=%B2%C4%A4%40%A6%E6%0D%0A%B4%FA%B8%D5+%26%2354620%3B&plain=a+b");
}

TEST(WebView, InputsAreCurrentWhenAHandlerAsks) {
  ShownPage page;
  page.Write(base::Literal(
      "<body style='margin:0'><input type='checkbox' id='chk1' style='position:absolute;left:20px;top:20px;"
      "width:40px;height:40px'><input type='radio' id='opt1' name='o' checked><input id='word' value='take'>"
      "</body>"));
  bool isChecked = false;
  std::string word;
  page.form->cmdGo.Click = [&] {
    isChecked = page.form->webMain.Checked("chk1");
    word = page.form->webMain.Value("word");
  };
  QPushButton& button = static_cast<QPushButton&>(page.machine.Widget(page.form->cmdGo));
  button.click();
  EXPECT_FALSE(isChecked);
  EXPECT_EQ(word, "take");
  EXPECT_TRUE(page.form->webMain.Checked("opt1"));
  page.ClickAt({40, 40});
  Timer again(page.machine.loop, 50);
  again.onTick = [&] { button.click(); };
  again.Enabled = true;
  page.machine.Wait([&] { return isChecked; });
}

TEST(WebView, PicturesOfTheProgramShowAndChineseIsRight) {
  ShownPage page;
  page.Write(
      base::Fill("<body background='file:///{0}/bg450.jpg'><img id='i' src='file:///{0}\\btnok_off.gif'>"
                 "<span id='t'>中文</span>{1}",
                 MAROVANE_UI_FOLDER,
                 OwnScript(base::Literal(
                     "window.onload=function(){document.title=document.getElementById('i').naturalWidth+' '+"
                     "document.getElementById('t').textContent.length;}"))));
  page.machine.Wait([&] { return !page.titles.empty(); });
  EXPECT_EQ(page.titles.back(), "88 2");
}

TEST(WebView, WrittenPageComesBackWhenItsRendererHasDied) {
  ShownPage page;
  page.Write(OwnScript(base::Literal("document.location.href='cmd:here'")));
  page.machine.Wait([&] { return !page.asked.empty(); });
  page.asked.clear();
  ASSERT_GT(KillRenderers(), 0);
  page.machine.Wait([&] { return !page.asked.empty(); });
  EXPECT_EQ(page.asked.back(), "cmd:here");
}

TEST(WebView, LastOfSeveralPagesStaysHoweverFastTheyFollow) {
  ShownPage page;
  for (const char* const title : {"one", "two", "last"}) {
    page.form->webMain.Navigate("about:blank");
    page.form->webMain.Write(base::Fill(kPage, Titled(title)));
  }
  page.machine.Wait([&] { return !page.titles.empty() && page.titles.back() == "last"; });
}

TEST(WebView, BoxesHaveTheirLookBeforeAnythingIsPainted) {
  ShownPage page;
  page.Write(base::Fill(
      "<body><input id='c' type='checkbox'>{}",
      OwnScript(base::Literal("document.title=getComputedStyle(document.getElementById('c')).appearance;"))));
  EXPECT_THAT(page.titles, ElementsAre("none"));
}

TEST(WebView, HistoryGoesBackToWrittenPages) {
  ShownPage page;
  page.Write(Titled("first"));
  page.Write(Titled("second"));
  EXPECT_EQ(page.titles.back(), "second");
  page.form->webMain.GoBack();
  page.machine.Wait([&] { return page.titles.back() == "first"; });
  page.form->webMain.GoForward();
  page.machine.Wait([&] { return page.titles.back() == "second"; });
}

}  // namespace

}  // namespace marovane
