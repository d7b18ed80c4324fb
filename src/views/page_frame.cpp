#include "views/page_frame.h"

#include <fmt/format.h>

#include <initializer_list>

#include "base/html.h"
#include "base/text.h"
#include "platform/web_browser.h"

namespace marovane {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string Lines(std::initializer_list<std::string_view> lines) {
  std::string text;
  for (const auto line : lines) text.append(line).append(kLineEnd);
  return text;
}

// The colours of the scroll bars are words of an older renderer, two of them misspelt; others pass them over.
std::string Theme(std::string_view color) {
  if (color.empty()) {
    return Lines({"   border-style:none; background-color: #585858;", "     SCROLLBAR-FACE-COLOR: #525252;",
                  "     SCROLLBAR-HIGHLIGHT-COLOR: #888888;", "     SCROLLBAR-SHADOW-COLOR: #FFFFFF;",
                  "     SCROLLBAR-3DLIGHT-COLOR: #525252;", "     SCROLLBAR-ARROW-COLOR: #CCCCCC;",
                  "     SCROLLBAR-TRACK-COLOR: #525252;", "     SCROLLBAR-DARKSHADOW-COLOR:#000000;"});
  }
  if (color == "YELLOW") {
    return Lines({"   border-style:none; background-color: #FAF4ED;", "     SCROLLBAR-FACE-COLOR: #FAF4ED;",
                  "     SCROLLBAR-HIGHLIGHT-COLOR: #FFFFFF;", "     SCROLLBAR-SHADOW-COLOR: #FFFFFF;",
                  "     SCROLLBAR-3DLIGHT-COLOR: #CCCCCC;", "     SCROLLBAR-ARROW-COLOR: #C96F38;",
                  "     SCROLLBAR-TRACK-COLOR: E8CCAA;", "     SCROLLBAR-DARKSHADOW-COLOR:#FFFFFF8;"});
  }
  return Lines({"   border-style:none; background-color: " + std::string(color) + ";"});
}

constexpr const char* kQuietBody = "data-quiet scroll='auto'>\r\n";

constexpr const char* kStyle = R"html(<style>
.hot:hover { color: #FFFF00 !important; }
.blue:hover { color: #0000FF !important; }
.plain:hover { text-decoration: none !important; }
</style>
)html";

constexpr const char* kScript = R"js((function() {
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

std::string BuildPageFrame(std::string_view part, std::string_view color) {
  if (part == "FOOTER") return Lines({"</body>", "</html>"});
  if (part != "HEADER") return "";
  return Lines({"<html>", "<head>", "<meta http-equiv='Content-Type' content='text/html; charset=big5'>",
                "<title></title>", "</head>", "<style>", "body {"}) +
         Theme(color) +
         Lines({"}", "p { line-height:150%; margin-top:5px; margin-bottom:5px; }", "</style>"});
}

const std::string& PageActions() {
  static const std::string actions = base::Replace(
      fmt::format("{}<script nonce='{}'>\n{}</script>\n", kStyle, PageNonce(), kScript), "\n", "\r\n");
  return actions;
}

std::string ParchmentBody(const std::string& programFolder) {
  return fmt::format("{}<body background='file:///{}/ui/bg450.jpg' style='background-attachment: fixed;' {}",
                     PageActions(), base::Escaped(programFolder), kQuietBody);
}

std::string DarkBody() { return PageActions() + "<body " + kQuietBody; }

}  // namespace marovane
