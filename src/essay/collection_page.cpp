#include "essay/collection_page.h"

#include "base/day.h"
#include "essay/topic_parts.h"
#include "views/check_list.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

using namespace topic_parts;

constexpr char kOpen[] = R"html(<table width='100%' border='0'>
<tr><td colspan='{0}' align='left' style='font-size:13px; color:#FFFF00; line-height:150%;'>{1}&nbsp;點一下短文題目，可顯示您的短文與該次分析結果</td></tr>
<tr style='font-size:14px; color:#FFCC00'>
<td width='4%'></td>
<td width='48%' align='left'>短文題目</td>
<td width='8%' align='center'>練習日</td>
<td width='10%' align='center'>犯錯數</td>
<td width='10%' align='center'>狀態</td>
{2}</tr>
)html";
constexpr char kActionHead[] = "<td width='20%' colspan='2'></td>\n";

// The hidden field keeps the first word only. Whoever wants the essay reads the records by the id in the box.
constexpr char kRow[] =
    "<input type='HIDDEN' name='rec{0}' id='rec{0}' value='{1}'>\n"
    "<tr style='font-size:14px; color:#FFFFFF'>\n"
    "<td valign='top' align='center'><input type='checkbox' name='{2}' id='{2}' value='{3}' "
    "style='margin-top:6px;'></td>\n"
    "<td valign='top' align='left'>{4}</td>\n"
    "<td valign='top' align='center'><font style='color:#CCCCCC;font-size:13px;'>{5}</font></td>\n"
    "<td valign='top' align='center'>{6}</td>\n"
    "<td valign='top' align='center'>{7}</td>\n"
    "{8}</tr>\n"
    "<tr><td colspan='{9}' height='1' bgcolor='#6A6A6A'></td></tr>\n";
constexpr char kActionCell[] = "<td valign='top' align='center' colspan='2'>{}</td>\n";

constexpr char kBroken[] = "<font style='font-size:13px;color:#FF6600;'>中斷</font>";
constexpr char kComplete[] = "<font style='font-size:13px;color:#808080;'>正常</font>";

base::Html Action(const EssayCollection& collection, const EssayRow& essay) {
  if (essay.finalSet == "Y") {
    return base::Fill("{}&nbsp;<font color='#00FF00'>已交卷</font><br>{}",
                      Image(collection.imageRoot, "mrv_icon_check.gif"),
                      Link("cmd:res:" + essay.workId, base::Literal("查看老師批閱"), kCyan,
                           base::Fill(" title='{0}' alt='{0}'", "點一下可查看是否有教師批閱內容")));
  }
  if (essay.finalSet == "A" || collection.isHandedIn) {
    return base::Literal("<font style='color:#808080;'>---</font>");
  }
  return Link("cmd:snd:" + essay.essayId + "@" + essay.workId,
              base::Fill("{}&nbsp;交卷?", Image(collection.imageRoot, "mrv_icon_finalset.gif")), kCyan);
}

std::string FirstWord(const std::string& text) {
  constexpr const char* kBlanks = " \t\r\n\f";
  const auto begin = text.find_first_not_of(kBlanks);
  return begin == std::string::npos ? "" : text.substr(begin, text.find_first_of(kBlanks, begin) - begin);
}

void AddRow(base::Html& body, const EssayCollection& collection, int number, const CollectedEssay& row,
            int columns) {
  const EssayRow& essay = row.essay;
  body.Add(kRow, number, FirstWord(PlainApostrophes(essay.newEssay)), CheckBoxId(number), essay.essayId,
           Link("cmd:show:" + essay.essayId, base::Fill("{}", PlainApostrophes(essay.quiz))),
           base::ShownDay(essay.sDate), MistakesCell(row.mistakes),
           essay.finalSet == "A" ? base::Literal(kBroken) : base::Literal(kComplete),
           collection.canHandIn ? base::Fill(kActionCell, Action(collection, essay)) : base::Html(), columns);
}

}  // namespace

base::Html EssayCollectPage(const EssayCollection& collection) {
  const int columns = collection.canHandIn ? 7 : 5;
  base::Html body = base::Fill(kOpen, columns, Image(collection.imageRoot, "icon_obj.gif"),
                               collection.canHandIn ? base::Literal(kActionHead) : base::Html());
  int number = 0;
  for (const auto& row : collection.rows) AddRow(body, collection, ++number, row, columns);
  return base::Fill("{}{}</table>\r\n{}", BeginDarkPage(), WithCrLf(body), BuildPageFrame("FOOTER", ""));
}

}  // namespace marovane
