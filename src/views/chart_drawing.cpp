#include "views/chart_drawing.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/day.h"
#include "base/html.h"
#include "core/text_utility.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

// The room of a drawing, in the units of its view box.
constexpr double kWidth = 560;
constexpr double kLeft = 40;
constexpr double kPlotWidth = kWidth - kLeft - 12;
constexpr double kTop = 10;
constexpr double kPlotHeight = 120;
constexpr double kBottom = kTop + kPlotHeight;
constexpr double kPlotEnd = kBottom + 22;

int Total(const PracticeDay& entry) { return entry.right + entry.faulty; }

base::Html Open(const char* label, double height) {
  return base::Fill("<svg viewBox='0 0 {} {}' role='img' aria-label='{}'>\n", kWidth, height, label);
}

// Three lines, from nothing to the top.
void PutGrid(base::Html& page, int top, const char* unit) {
  constexpr int kSteps = 2;
  for (int step = 0; step <= kSteps; ++step) {
    const double y = kBottom - kPlotHeight * step / kSteps;
    page.Add("<line x1='{0}' y1='{1}' x2='{2}' y2='{1}' stroke='#6A6A6A'/>\n", kLeft, y, kLeft + kPlotWidth);
    page.Add("<text x='{}' y='{}' text-anchor='end'>{}{}</text>\n", kLeft - 6, y + 4,
             FormatNumber(top * step / kSteps), unit);
  }
}

void PutDayLabel(base::Html& page, double x, base::Day day) {
  page.Add("<text x='{:.1f}' y='{}' text-anchor='middle'>{}/{}</text>\n", x, kBottom + 16,
           unsigned{day.month()}, unsigned{day.day()});
}

void PutBar(base::Html& page, double x, double y, double width, double height, const char* color) {
  if (height <= 0) return;
  page.Add("<rect x='{:.1f}' y='{:.1f}' width='{:.1f}' height='{:.1f}' fill='{}'/>\n", x, y, width, height,
           color);
}

void PutDay(base::Html& page, const PracticeDay& day, double x, double room, double unit) {
  constexpr double kFilled = 0.72;  // of a day's room
  const double width = room * kFilled;
  const double left = x + (room - width) / 2;
  page.Add("<g><title>{}：正確 {}，犯錯 {}</title>\n", base::ShownDay(day.day), FormatNumber(day.right),
           FormatNumber(day.faulty));
  PutBar(page, left, kBottom - day.right * unit, width, day.right * unit, kRightColor);
  PutBar(page, left, kBottom - Total(day) * unit, width, day.faulty * unit, kFaultyColor);
  page.Add("</g>\n");
}

void PutPoint(base::Html& page, const PracticeDay& week, double x, double y) {
  page.Add(
      "<circle cx='{:.1f}' cy='{:.1f}' r='3' fill='{}'><title>{} 起的一週：{}%（{} 句）</title></circle>\n",
      x, y, kLineColor, base::ShownDay(week.day), RightShare(week), FormatNumber(Total(week)));
}

void PutError(base::Html& page, const FrequentError& error, double y, double unit) {
  constexpr double kBarHeight = 8;
  page.Add("<text class='outline' x='0' y='{}'>{}</text>\n", y + 12, error.outline);
  page.Add("<rect x='0' y='{}' width='{:.1f}' height='{}' rx='3' fill='{}'/>\n", y + 18, error.count * unit,
           kBarHeight, kFaultyColor);
  page.Add("<text x='{:.1f}' y='{}'>{}</text>\n", error.count * unit + 6, y + 26, FormatNumber(error.count));
}

}  // namespace

int ScaleTop(int count) {
  for (std::int64_t power = 1;; power *= 10) {
    for (const int step : {1, 2, 4, 6}) {
      if (step * power >= std::max(count, 4)) return static_cast<int>(step * power);
    }
  }
}

int RightShare(const PracticeDay& entry) {
  constexpr int kWhole = 100;
  const int total = Total(entry);
  return total == 0 ? 0 : (entry.right * kWhole + total / 2) / total;
}

base::Html DayBars(const std::vector<PracticeDay>& days) {
  base::Html page = Open("最近六週每日的正確句子與犯錯次數", kPlotEnd);
  int most = 0;
  for (const auto& day : days) most = std::max(most, Total(day));
  const int top = ScaleTop(most);
  const double room = kPlotWidth / static_cast<double>(std::max<std::size_t>(days.size(), 1));
  PutGrid(page, top, "");
  double x = kLeft;
  for (const auto& day : days) {
    PutDay(page, day, x, room, kPlotHeight / top);
    if (day.day == MondayOf(day.day)) PutDayLabel(page, x + room / 2, day.day);
    x += room;
  }
  page.Add("</svg>\n");
  return page;
}

base::Html ShareLine(const std::vector<PracticeDay>& weeks) {
  constexpr int kWhole = 100;
  constexpr std::size_t kLabelEvery = 4;
  base::Html page = Open("每週正確句子的比率", kPlotEnd);
  PutGrid(page, kWhole, "%");
  const double room = kPlotWidth / static_cast<double>(std::max<std::size_t>(weeks.size(), 1));
  std::string line;
  base::Html points;
  bool isDrawing = false;
  for (std::size_t i = 0; i < weeks.size(); ++i) {
    const double x = kLeft + room * (static_cast<double>(i) + 0.5);
    if ((weeks.size() - 1 - i) % kLabelEvery == 0) PutDayLabel(page, x, weeks[i].day);
    const bool hasShare = Total(weeks[i]) > 0;
    if (hasShare) {
      const double y = kBottom - kPlotHeight * RightShare(weeks[i]) / kWhole;
      line += fmt::format("{}{:.1f} {:.1f} ", isDrawing ? 'L' : 'M', x, y);
      PutPoint(points, weeks[i], x, y);
    }
    isDrawing = hasShare;
  }
  page.Add("<path d='{}' fill='none' stroke='{}' stroke-width='2' stroke-linejoin='round'/>\n", line,
           kLineColor);
  page.Add("{}</svg>\n", points);
  return page;
}

base::Html ErrorBars(const std::vector<FrequentError>& errors) {
  constexpr double kRowHeight = 34;
  constexpr double kBarRoom = kWidth - 60;
  base::Html page = Open("最常犯的錯誤", kRowHeight * static_cast<double>(errors.size()));
  int most = 1;
  for (const auto& error : errors) most = std::max(most, error.count);
  double y = 0;
  for (const auto& error : errors) {
    PutError(page, error, y, kBarRoom / most);
    y += kRowHeight;
  }
  page.Add("</svg>\n");
  return page;
}

base::Html EmptyPicture() {
  return base::Literal(R"html(<svg viewBox='0 0 560 300' role='img' aria-label='還沒有造句記錄'>
<g fill='none' stroke='#8C8C8C' stroke-width='2' stroke-linecap='round'>
<path d='M170 230h220'/><path d='M170 230V90' /><path d='M170 160h220M170 95h220' stroke-dasharray='3 9'/>
</g>
<g fill='#6A6A6A'><rect x='196' y='196' width='26' height='34' rx='4'/><rect x='244' y='172' width='26' height='58' rx='4'/>
<rect x='292' y='146' width='26' height='84' rx='4'/></g>
<rect x='340' y='112' width='26' height='118' rx='4' fill='#FFCC00'/>
<path d='M360 92l30-30 10 10-30 30-13 3z' fill='#F2F0EA'/>
<text x='280' y='262' text-anchor='middle' style='font-size:15px;fill:#F2F0EA'>還沒有造句記錄</text>
<text x='280' y='284' text-anchor='middle' style='font-size:13px;fill:#D0CDC5'>檢查第一個句子，這裡就會開始長出圖表</text>
</svg>
)html");
}

}  // namespace marovane
