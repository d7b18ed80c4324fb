#include "views/page_frame.h"

#include <utility>

#include "platform/web_browser.h"

namespace marovane {

namespace {

// The colours of the scroll bars are words of an older renderer, two of them misspelt; others pass them over.
base::Html Theme(std::string_view color) {
  if (color.empty()) {
    return base::Literal(
        "   border-style:none; background-color: #585858;\r\n     SCROLLBAR-FACE-COLOR: #525252;\r\n"
        "     SCROLLBAR-HIGHLIGHT-COLOR: #888888;\r\n     SCROLLBAR-SHADOW-COLOR: #FFFFFF;\r\n"
        "     SCROLLBAR-3DLIGHT-COLOR: #525252;\r\n     SCROLLBAR-ARROW-COLOR: #CCCCCC;\r\n"
        "     SCROLLBAR-TRACK-COLOR: #525252;\r\n     SCROLLBAR-DARKSHADOW-COLOR:#000000;\r\n");
  }
  if (color == "YELLOW") {
    return base::Literal(
        "   border-style:none; background-color: #FAF4ED;\r\n     SCROLLBAR-FACE-COLOR: #FAF4ED;\r\n"
        "     SCROLLBAR-HIGHLIGHT-COLOR: #FFFFFF;\r\n     SCROLLBAR-SHADOW-COLOR: #FFFFFF;\r\n"
        "     SCROLLBAR-3DLIGHT-COLOR: #CCCCCC;\r\n     SCROLLBAR-ARROW-COLOR: #C96F38;\r\n"
        "     SCROLLBAR-TRACK-COLOR: E8CCAA;\r\n     SCROLLBAR-DARKSHADOW-COLOR:#FFFFFF8;\r\n");
  }
  return base::Fill("   border-style:none; background-color: {};\r\n", color);
}

constexpr char kStyle[] = R"html(<style>
.hot:hover { color: #FFFF00 !important; }
.blue:hover { color: #0000FF !important; }
.plain:hover { text-decoration: none !important; }
</style>
)html";

constexpr char kScript[] = R"js((function() {
const at = id => document.getElementById(id);
const go = address => { document.location.href = address; };
const near = (event, name) => event.target.closest('[data-' + name + ']');
const boxesBy = element => [...element.closest('table').querySelectorAll("input[id^='chkdel_']")];
let marked = null;
function open(element) {
  const isClosed = element.style.display == 'none';
  element.style.display = isClosed ? (element.tagName == 'DIV' ? 'block' : 'inline') : 'none';
}
function flip(element) {
  const picture = element.dataset.flip;
  if (!picture) return open(element);
  element.dataset.flip = element.src;
  element.src = picture;
}
const actions = {
  go: element => go(element.dataset.go),
  pick: element => { at(element.dataset.pick).checked = true; },
  send: () => {
    const option = document.querySelector('input[type=radio]:checked');
    if (option) go('cmd:suggest:' + option.value);
  },
  toggle: element => {
    open(at(element.dataset.toggle));
    element.querySelectorAll('[data-flip]').forEach(flip);
  },
  mark: element => {
    if (marked) marked.style.backgroundColor = '#585858';
    marked = element.dataset.mark == 'off' ? null : element;
    if (marked) marked.style.backgroundColor = '#000000';
  },
  invert: element => boxesBy(element).forEach(box => { box.checked = !box.checked; }),
  delete: element => go('cmd:del:' +
      boxesBy(element).filter(box => box.checked).map(box => box.value + '|').join('')),
};
document.addEventListener('click', event => {
  if (event.target.closest("a[href='#']")) event.preventDefault();
  for (const [name, act] of Object.entries(actions)) {
    const element = near(event, name);
    if (element) act(element);
  }
});
document.addEventListener('dblclick', event => {
  const element = near(event, 'open');
  if (!element) return;
  if (element.dataset.tick) at(element.dataset.tick).checked = true;
  go(element.dataset.open);
});
document.addEventListener('keydown', event => {
  if (event.key == 'Enter' && near(event, 'delete')) event.target.click();
});
for (const [type, face] of [['mouseover', 1], ['mouseout', 0], ['mousedown', 2], ['mouseup', 0]]) {
  document.addEventListener(type, event => {
    const element = near(event, 'faces');
    if (element) element.src = at(element.dataset.faces + face).src;
  });
}
for (const type of ['dragstart', 'contextmenu', 'selectstart']) {
  document.addEventListener(type, event => {
    if ('quiet' in document.body.dataset) event.preventDefault();
  });
}
})();
)js";

}  // namespace

base::Html BuildPageFrame(std::string_view part, std::string_view color) {
  if (part == "FOOTER") return base::Literal("</body>\r\n</html>\r\n");
  if (part != "HEADER") return {};
  return base::Fill(
      "<html>\r\n<head>\r\n<meta http-equiv='Content-Type' content='text/html; charset=big5'>\r\n"
      "<title></title>\r\n</head>\r\n<style>\r\nbody {{\r\n{}}}\r\n"
      "p {{ line-height:150%; margin-top:5px; margin-bottom:5px; }}\r\n</style>\r\n",
      Theme(color));
}

const base::Html& PageActions() {
  static const base::Html actions = WithCrLf(base::Fill(
      "{}<script nonce='{}'>\n{}</script>\n", base::Literal(kStyle), PageNonce(), base::Literal(kScript)));
  return actions;
}

base::Html BeginParchmentPage(std::string_view programFolder) {
  return base::Fill(
      "{}{}<body background='file:///{}/ui/bg450.jpg' style='background-attachment: fixed;' data-quiet "
      "scroll='auto'>\r\n",
      BuildPageFrame("HEADER", "YELLOW"), PageActions(), programFolder);
}

base::Html BeginDarkPage(const base::Html& style) {
  return base::Fill("{}{}{}<body data-quiet scroll='auto'>\r\n", BuildPageFrame("HEADER", ""), style,
                    PageActions());
}

void OnCommands(WebBrowser& page, PageCommands commands, std::function<void()> before) {
  page.BeforeNavigate2 = [commands = std::move(commands), before = std::move(before)](const std::string& url,
                                                                                      bool& cancel) {
    constexpr std::string_view kPrefix = "cmd:";
    if (!url.starts_with(kPrefix)) return;
    cancel = true;
    if (before) before();
    const auto colon = url.find(':', kPrefix.size());
    const std::size_t end = colon == std::string::npos ? url.size() : colon + 1;
    const auto command = commands.find(url.substr(kPrefix.size(), end - kPrefix.size()));
    if (command != commands.end()) command->second(url.substr(end));
  };
}

}  // namespace marovane
