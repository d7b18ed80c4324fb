#include "core/text_utility.h"
#include "views/chart_drawing.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr char kChartsStyle[] = R"html(<style>
.card { background-color: #484848; border-radius: 8px; margin: 0 4px 12px 4px; padding: 10px 14px 10px 14px; }
.title { font-family: Arial; font-size: 14px; color: #FFCC00; margin-bottom: 6px; }
.legend { float: right; font-size: 12px; color: #E4E1D9; }
.tile { background-color: #484848; border-radius: 8px; padding: 8px 14px; font-family: Arial; font-size: 13px; color: #E4E1D9; }
.big { font-size: 26px; color: #FFFFFF; }
.note { font-family: Arial; font-size: 12px; color: #C8C5BD; margin: 0 8px; }
svg { display: block; width: 100%; font-family: Arial; }
text { font-size: 11px; fill: #D0CDC5; }
.outline { font-size: 13px; fill: #F2F0EA; }
</style>
)html";

PracticeDay Sum(const std::vector<PracticeDay>& entries) {
  PracticeDay sum;
  for (const auto& entry : entries) {
    sum.right += entry.right;
    sum.faulty += entry.faulty;
  }
  return sum;
}

base::Html Tile(const char* label, const std::string& number, const char* unit) {
  return base::Fill("<td width='33%' class='tile'>{}<br><span class='big'>{}</span> {}</td>\n", label, number,
                    unit);
}

base::Html Tiles(const Charts& charts) {
  const PracticeDay sum = Sum(charts.days);
  const int total = sum.right + sum.faulty;
  return base::Fill(
      "<table width='100%' border='0' cellspacing='4' cellpadding='0' style='margin-bottom:8px;'><tr>\n"
      "{}{}{}</tr></table>\n",
      Tile("連續造句", FormatNumber(charts.runOfDays), "天"), Tile("最近六週造句", FormatNumber(total), "句"),
      Tile("最近六週正確率", total == 0 ? "－" : std::to_string(RightShare(sum)), "%"));
}

base::Html Card(const char* title, const base::Html& legend, const base::Html& drawing) {
  return base::Fill("<div class='card'><div class='title'><span class='legend'>{}</span>{}</div>\n{}</div>\n",
                    legend, title, drawing);
}

base::Html Cards(const Charts& charts) {
  const base::Html legend =
      base::Fill("<font color='{}'>■</font> 正確　<font color='{}'>■</font> 犯錯", kRightColor, kFaultyColor);
  base::Html cards = Card("每日造句（最近六週）", legend, DayBars(charts.days));
  cards += Card("每週正確率（最近半年）", {}, ShareLine(charts.weeks));
  if (!charts.errors.empty()) cards += Card("最常犯的錯誤", {}, ErrorBars(charts.errors));
  return cards;
}

}  // namespace

base::Html ChartsPage(const Charts& charts) {
  base::Html page = BeginDarkPage(base::Literal(kChartsStyle));
  if (charts.IsEmpty()) {
    page += EmptyPicture();
  } else {
    page.Add("{}{}<p class='note'>含短文中的句子，不含已刪除的記錄</p>\n", Tiles(charts), Cards(charts));
  }
  page += BuildPageFrame("FOOTER", "");
  return page;
}

}  // namespace marovane
