#include "views/error_statistics_page.h"

#include "core/text_utility.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr char kCategory[] =
    R"html(<tr><td data-mark='off' align='left' colspan='2' width='100%'>
<a style='text-decoration: none;' href='rem:clear' data-toggle='div{0}'>
<img id = 'imgoff{0}' src='file:///{1}/ui/folder-off.gif' border='0' style='display:inline;' data-flip>
<img id = 'imgon{0}' src='file:///{1}/ui/folder-on.gif' border='0' style='display:none;' data-flip>
<font style='font-family: Arial; font-size: 14px; color: #FFCC00'>{2}</font>
&nbsp;&nbsp;&nbsp;&nbsp;<font style='font-family: Arial; font-size: 14px; color: #FFCC00'>{3}</font>
</a>
</td>
</tr>
<tr><td align='left' colspan='2' width='100%'>
<table width='100%' id='div{0}' style='display:none;'>
)html";

constexpr char kCode[] = R"html(<tr>
<td width='5%'></td>
<td id='td_{0}' data-mark width='95%' align='left'>
<a style='text-decoration: none;' href='rem:errcode:{0}' data-open='cmd:errcode:{0}'>
<font style='font-family: Arial; font-size: 12px; color: #FFFFFF'>{1}</font>
</a>
&nbsp;&nbsp;&nbsp;&nbsp;<font style='font-family: Arial; font-size: 12px; color: #FFCC00'>{2}</font>
</td>
</tr>
)html";

void AddCategory(base::Html& body, const std::string& folder, const CountedCategory& entry) {
  body.Add(kCategory, entry.category.id, folder, entry.category.name, FormatNumber(entry.count));
  for (const auto& [code, count] : entry.codes) {
    body.Add(kCode, code.errcode, code.outline, FormatNumber(count));
  }
  body.Add("</table>\n</td></tr>\n");
}

}  // namespace

std::vector<CountedCategory> CountErrors(ErrListDb& errList, RecordDb& records,
                                         const std::function<void()>& afterEachCode) {
  std::vector<CountedCategory> tree;
  for (const auto& category : errList.Categories()) {
    const int total = records.CountErrorsLike(category.id);
    if (total <= 0) continue;
    CountedCategory entry{category, total, {}};
    for (const auto& code : errList.CodesOf(category.id)) {
      const int count = records.CountErrorsWith(code.errcode);
      if (count > 0) entry.codes.push_back({code, count});
      if (afterEachCode) afterEachCode();
    }
    tree.push_back(std::move(entry));
  }
  return tree;
}

base::Html ErrorStatisticsPage(const std::string& programFolder,
                               const std::vector<CountedCategory>& categories) {
  base::Html body = base::Literal("<div align='center'>\n<table border='0' width='99%' id='table1'>\n");
  for (const auto& category : categories) AddCategory(body, programFolder, category);
  body.Add("</table>\n");
  return base::Fill("{}{}{}", BeginDarkPage(), WithCrLf(body), BuildPageFrame("FOOTER", ""));
}

}  // namespace marovane
