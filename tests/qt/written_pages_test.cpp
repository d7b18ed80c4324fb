// The pages of the program on the real engine: their scripts, their commands, marks that the program sets,
// and texts that try to be more than texts.
#include <fmt/ranges.h>
#include <gmock/gmock.h>

#include "checking/error_sentences.h"
#include "checking/suggest_page.h"
#include "essay/collection_page.h"
#include "essay/comparison.h"
#include "essay/report.h"
#include "essay/topic_pages.h"
#include "tests/qt/program_windows.h"
#include "tests/qt/shown_page.h"
#include "views/chart_drawing.h"
#include "views/day_sentences_page.h"
#include "views/error_statistics_page.h"
#include "wordhelper/word_bank_text.h"

namespace marovane {

namespace {

using testing::ElementsAre;

/// Shows pages together with a script that acts as their reader does and reports in the title.
class WrittenPages : public testing::Test, protected ShownPage {
 protected:
  WrittenPages() { followsLinks = false; }
  void Write(const base::Html& page, const base::Html& script) {
    titles.clear();
    web.Write(base::Fill("{}{}", page,
                         OwnScript(base::Fill("const at = id => document.getElementById(id);{}", script))));
  }
  std::string Report() {
    machine.Wait([&] { return !LastTitle().empty(); });
    return LastTitle();
  }
  void WaitForCommands(std::size_t count) {
    machine.Wait([&] { return asked.size() >= count && completed > 0; });
  }
};

/// What a reader does in a page, what comes of it, and what the page looks like then.
struct Use {
  base::Html page;
  base::Html script;  ///< the last step sets the title
  std::vector<std::string> commands;
  std::string report;
};

// One step a tenth of a second: a command that is still on its way would be replaced by the next.
constexpr char kSteps[] =
    "const does = (element, type) => element.dispatchEvent(new MouseEvent(type, {bubbles: true, cancelable: "
    "true}));"
    "const all = selector => [...document.querySelectorAll(selector)];"
    "const steps = (...all) => all.forEach((step, i) => setTimeout(step, 100 * i));";

TEST_F(WrittenPages, DoWhatTheirAttributesSay) {
  const EssayRow essay{.essayId = "7",
                       .workId = "w",
                       .quiz = {},
                       .orgEssay = {},
                       .newEssay = {},
                       .sDate = base::Day{std::chrono::year{2026} / 11 / 5}};
  EssayRow handedIn = essay;
  handedIn.finalSet = "Y";
  EssayRow other = essay;
  other.essayId = "8";
  const Use uses[] = {
      {ErrorStatisticsPage(MAROVANE_UI_FOLDER "/..",
                           {{{"AG", "一致"}, 3, {{{"AG01", "動詞"}, 2}, {{"AG02", "主詞"}, 1}}}}),
       base::Literal("steps(() => document.querySelector('#table1 a').click(),"
                     "  () => at('td_AG01').querySelector('a').click(),"
                     "  () => at('td_AG02').querySelector('a').click(),"
                     "  () => does(at('td_AG02').querySelector('a'), 'dblclick'),"
                     "  () => { document.title = at('divAG').style.display + at('imgonAG').style.display +"
                     "    at('imgoffAG').style.display + at('td_AG01').style.backgroundColor +"
                     "    at('td_AG02').style.backgroundColor; });"),
       {"rem:clear", "rem:errcode:AG01", "rem:errcode:AG02", "cmd:errcode:AG02"},
       "inlineinlinenonergb(88, 88, 88)rgb(0, 0, 0)"},
      {OwnTopicsPage("http://x/", true, {{"w", "T", false, {{essay, handedIn, other}, 0}}}),
       base::Literal("const look = () => at('sysResBlockw').style.display + at('expw').src;"
                     "let before = '';"
                     "steps(() => at('expw').click(), () => { before = look(); }, () => at('expw').click(),"
                     "  () => all(\"input[name='chkdelall']\")[0].click(),"
                     "  () => all('[data-delete]')[0].click(),"
                     "  () => { at('chkdel_w_1').checked = false; },"
                     "  () => all('[data-delete]')[0].dispatchEvent("
                     "    new KeyboardEvent('keydown', {key: 'Enter', bubbles: true})),"
                     "  () => { document.title = before + ' ' + look(); });"),
       {"cmd:del:7%7C%7C8%7C", "cmd:del:%7C8%7C"},
       "inlinehttp://x/ico_tree_0.gif nonehttp://x/ico_tree_1.gif"},
      {SuggestPage(MAROVANE_UI_FOLDER "/..", {{"a,SN", "A"}, {"b,SN", "B"}}),
       base::Literal("const face = () => at('btnOK').src.replace(/.*_(.*).gif/, '$1');"
                     "const faces = [];"
                     "for (const type of ['mouseover', 'mousedown', 'mouseup']) {"
                     "  does(at('btnOK'), type);"
                     "  faces.push(face());"
                     "}"
                     "steps(() => at('btnOK').click(), () => all('a')[1].click(), () => at('btnOK').click(),"
                     "  () => does(all('a')[0], 'dblclick'),"
                     "  () => { document.title = faces + ' ' + at('suggest2').checked; });"),
       {"cmd:suggest:b,SN", "cmd:suggest:a,SN"},
       "over,on,off true"},
  };
  for (const auto& use : uses) {
    asked.clear();
    Write(use.page, base::Fill("{}{}", base::Literal(kSteps), use.script));
    EXPECT_EQ(Report(), use.report);
    WaitForCommands(use.commands.size());  // each reads the inputs of the page first, and comes later
    EXPECT_EQ(asked, use.commands);
  }
}

TEST_F(WrittenPages, ADoubleClickTicksTheSentenceAndAsksForIt) {
  Write(DaySentencesPage({{"11", "He’s \"here\"."}, {"12", "She reads."}}, {}),
        base::Literal("document.querySelectorAll('a')[0].dispatchEvent("
                      "new MouseEvent('dblclick', {bubbles: true}));"));
  WaitForCommands(1);
  EXPECT_THAT(asked, ElementsAre("cmd:passEngine"));
  EXPECT_TRUE(web.Checked("chk1"));
  EXPECT_FALSE(web.Checked("chk2"));
  EXPECT_EQ(web.Value("rec1"), "He's \"here\".");
  EXPECT_EQ(web.Value("chk2"), "12");
  web.SetChecked({{"chk1", false}, {"chk2", true}, {"chk3", true}});
  web.inputChecked.clear();
  form->cmdGo.Click = [] {};
  machine.windows.Find(*form)->Find(form->cmdGo)->ClickIt();  // a click brings the marks over
  EXPECT_FALSE(web.Checked("chk1"));
  EXPECT_TRUE(web.Checked("chk2"));
}

// What somebody may have written into any column of any row, and into whatever a server says.
const std::vector<std::string> kHostile = {
    "'); ran = 1; ('",
    "\"); ran = 1; (\"",
    "\\'); ran = 1; //",
    "&#39;); ran = 1; //",
    "\"><script>ran = 1</script>",
    "'><img src='x:' onerror='ran = 1'>",
    "</script><script>ran = 1</script>",
    "</title></style></textarea><svg onload='ran = 1'>",
    "javascript:ran = 1",
    "x onmouseover=ran=1 onclick=ran=1 ",
    "' onmouseover='ran = 1' onclick='ran = 1' x='",
    "\xE2\x80\xA8ran = 1\xE2\x80\xA9",
    std::string("nul\0'><script>ran = 1</script>", 31),
    "*<b onclick='ran = 1'>*",
    "{} {0} {{ %s %1 \xFF\xF0\x9F",
};

struct HostilePage {
  const char* name;
  std::function<base::Html(const std::vector<std::string>& texts)> build;
};

/// A row of each text.
template <class Make>
auto Each(const std::vector<std::string>& texts, const Make& make) {
  std::vector<decltype(make(texts[0]))> rows;
  for (const auto& text : texts) rows.push_back(make(text));
  return rows;
}

ListedSentence SentenceOf(const std::string& text) { return {text, text}; }
CountedCategory CategoryOf(const std::string& text) { return {{text, text}, 1, {{{text, text}, 1}}}; }
FrequentError ErrorOf(const std::string& text) { return {text, 1}; }
Suggestion SuggestionOf(const std::string& text) { return {text, text}; }

EssayRow EssayOf(const std::string& text, const std::string& finalSet) {
  return {.essayId = text,
          .workId = text,
          .quiz = text,
          .orgEssay = text,
          .newEssay = text,
          .upload = text,
          .finalSet = finalSet,
          .sDate = {}};
}

base::Html ReportOf(const std::vector<std::string>& texts, const std::string& finalSet) {
  EssayReport report{.essay = EssayOf(texts[0], finalSet),
                     .okSentences = {},
                     .errSentences = {},
                     .imageRoot = texts[0],
                     .outlineOf = [](const std::string& code) { return code; }};
  for (const auto& text : texts) {
    for (const char* flag : {"N", "2"})
      report.okSentences.push_back(
          {.sId = text, .sentence = text + ".", .sDate = {}, .essaySId = flag + text, .haveHtm = flag});
    report.okSentences.push_back({.sId = text, .sentence = text + ".", .sDate = {}, .essaySId = text});
    for (int i = 0; i < 2; ++i)
      report.errSentences.push_back(
          {.id = text, .sentence = text + ".", .errcode = text, .sDate = {}, .essaySId = text});
    report.essay.orgEssay += text + ".\r\n";
  }
  return BuildEssayReport(report);
}

OwnTopic TopicOf(const std::string& text) { return {text, text, false, {{EssayOf(text, "A")}, 1}}; }

base::Html AssignmentsOf(const std::vector<std::string>& texts) {
  std::vector<AssignedTopic> topics;
  for (const auto& text : texts) {
    for (const bool isHandedIn : {false, true}) {
      topics.push_back(
          {{text, isHandedIn, text, text, text, isHandedIn}, {{EssayOf(text, "N"), EssayOf(text, "Y")}, 1}});
    }
    topics.push_back({{text, false, text, "", text, false}, {}});
  }
  return AssignedWorkPage(texts[0], topics);
}

base::Html CollectionOf(const std::vector<std::string>& texts) {
  EssayCollection collection{.rows = {}, .canHandIn = true, .isHandedIn = false, .imageRoot = texts[0]};
  for (const auto& text : texts) {
    for (const char* state : {"A", "N", "Y"}) collection.rows.push_back({EssayOf(text, state), 1});
  }
  return EssayCollectPage(collection);
}

const HostilePage kHostilePages[] = {
    {"report", [](const auto& texts) { return ReportOf(texts, "N"); }},
    {"report of an essay that broke off", [](const auto& texts) { return ReportOf(texts, "A"); }},
    {"comparison",
     [](const auto& texts) { return EssayComparePage(fmt::format("{}", fmt::join(texts, "\r\n"))); }},
    {"sentences of an error", [](const auto& texts) { return ErrSentencePage(texts[0], texts); }},
    {"sentences of days",
     [](const auto& texts) { return DaySentencesPage(Each(texts, SentenceOf), Each(texts, SentenceOf)); }},
    {"errors", [](const auto& texts) { return ErrorStatisticsPage(texts[0], Each(texts, CategoryOf)); }},
    {"charts",
     [](const auto& texts) {
       return ChartsPage({{}, {}, Each(texts, ErrorOf), 0});
     }},
    {"assignments", AssignmentsOf},
    {"own topics", [](const auto& texts) { return OwnTopicsPage(texts[0], true, Each(texts, TopicOf)); }},
    {"essays of a topic", CollectionOf},
    {"suggestions", [](const auto& texts) { return SuggestPage(texts[0], Each(texts, SuggestionOf)); }},
    {"near-synonyms", [](const auto& texts) { return SynonymPage(texts, false); }},
};

/// Does to each element all that a reader can do, but for commands. Says whether a script has run, and of
/// what elements and attributes the page is made.
constexpr char kDoEverything[] = R"js(
  const elements = [...document.querySelectorAll('body, body *')].filter(e => e.tagName != 'SCRIPT');
  const names = new Set(elements.flatMap(e => [e.tagName, ...e.getAttributeNames()]));
  for (const element of elements) {
    if (/^(cmd|rem):/.test(element.getAttribute('href'))) continue;
    for (const type of ['mouseover', 'click', 'error']) {
      element.dispatchEvent(new MouseEvent(type, {cancelable: true}));
    }
  }
  setTimeout(() => { document.title = [window.ran || 'no script ran', ...[...names].sort()].join(' '); }, 100);)js";

TEST_F(WrittenPages, AreMadeOfTheSameElementsWhateverTheirTextsSay) {
  for (const auto& hostile : kHostilePages) {
    SCOPED_TRACE(hostile.name);
    std::string made[2];
    for (const bool isHostile : {false, true}) {
      const auto texts = isHostile ? kHostile : std::vector<std::string>(kHostile.size(), "*harmless* words");
      Write(hostile.build(texts), base::Literal(kDoEverything));
      made[isHostile ? 1 : 0] = Report();
    }
    EXPECT_EQ(made[0], made[1]);
    EXPECT_THAT(made[0], testing::StartsWith("no script ran "));
  }
}

}  // namespace

}  // namespace marovane
