#include "tests/essay/topics_fixture.h"

#include <fmt/format.h>

#include <regex>

#include "base/cp950.h"
#include "base/day.h"
#include "base/text.h"
#include "core/settings.h"

namespace marovane {

TopicsTest::TopicsTest() {
  WriteSetup(composition.program, "NeedSync", "N");
  Assign("OK_");
}

void TopicsTest::Put(const StoredEssay& essay) {
  const base::Day day = std::chrono::year{2026} / 11 / essay.day;
  EssayRecords(composition.records)
      .InsertEssay({essay.essayId, essay.workId, essay.quiz, essay.text, essay.text, essay.upload,
                    essay.finalSet, day});
  composition.records.InsertOkSentence({.sId = std::string("ok") + essay.essayId,
                                        .sentence = essay.text,
                                        .sDate = day,
                                        .upload = essay.upload,
                                        .essayId = essay.essayId});
  for (int i = 0; i < essay.mistakes; ++i) {
    composition.records.InsertErrSentence({.id = fmt::format("err{}-{}", essay.essayId, i),
                                           .sentence = "*I runs*.",
                                           .sDate = day,
                                           .upload = essay.upload,
                                           .essayId = essay.essayId});
  }
}

void TopicsTest::Assign(const std::string& reply) {
  machine.http.Route("p_mrv_get_essay_work.asp", base::ToCp950(reply));
}

FrmEssayInputEdu& TopicsTest::OpenTopics() {
  room.frmEssayInputEdu.Unload();
  composition.program.hall.frmEssayInputEdu->AsForm().Show();
  return *room.frmEssayInputEdu;
}

FrmEssayCollect& TopicsTest::OpenCollection(const std::string& workId, const std::string& mode) {
  room.frmEssayCollect.Unload();
  room.frmEssayCollect->ShowEssayCollect(workId, mode);
  return *room.frmEssayCollect;
}

void TopicsTest::Tick(const std::vector<int>& rows) {
  WebBrowser& page = room.frmEssayCollect->webHtml;
  const std::string html = page.Page();
  const std::regex input("<input type='\\w+' name='\\w+' id='(\\w+)' value='?([^ '>]*)");
  for (std::sregex_iterator at(html.begin(), html.end(), input), end; at != end; ++at) {
    page.inputValues[(*at)[1]] = (*at)[2];
  }
  for (const int row : rows) page.inputChecked["chk" + std::to_string(row)] = true;
}

std::string TopicsTest::EssaysWith(const std::string& flag) {
  std::string ids;
  for (const auto& id : Texts("select essayId from essay where upload = '" + flag + "' order by 1")) {
    ids += (ids.empty() ? "" : " ") + id;
  }
  return ids;
}

std::string TopicsTest::FinalSet(const std::string& essayId) {
  return EssayRecords(composition.records).FindEssay(essayId)->finalSet;
}

std::string RowsOf(const WebBrowser& browser) {
  std::string page = std::regex_replace(browser.Page(), std::regex("<br />"), " ");
  page = base::Replace(page, "&#39;", "'");
  page = page.substr(page.find("狀態</td>"));
  page = std::regex_replace(page.substr(page.find("</tr>")), std::regex("\\s+"), " ");
  page = std::regex_replace(page, std::regex("</tr>"), "\n");
  page = std::regex_replace(page, std::regex("<[^>]*>|&nbsp;"), " ");
  return std::regex_replace(std::regex_replace(page, std::regex(" +"), " "), std::regex("( ?\n ?)+"), "\n");
}

std::vector<std::string> CommandsOf(const WebBrowser& browser) {
  std::vector<std::string> commands;
  const std::string page = browser.Page();
  const std::regex link("<a [^>]*href=[\"'](cmd:[^\"']*)");
  for (std::sregex_iterator at(page.begin(), page.end(), link), end; at != end; ++at) {
    if (!(*at)[1].str().starts_with("cmd:tab:")) commands.push_back((*at)[1]);
  }
  return commands;
}

}  // namespace marovane
