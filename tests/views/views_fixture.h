// Windows that look back on records, over real databases and without a screen.
#pragma once

#include <regex>
#include <string>

#include "base/text.h"
#include "platform/web_browser.h"
#include "records/err_list_db.h"
#include "records/record_db.h"
#include "tests/core/core_fixture.h"
#include "tests/records/record_store.h"

namespace marovane {

/// What a renderer would find in a page: the values and marks of its inputs, by id.
inline void LoadInputs(WebBrowser& browser) {
  static const std::regex input(R"re(<input type='(\w+)' name='\w+' id='(\w+)' value=(['"])(.*?)\3>)re");
  const std::string& page = browser.Page();
  for (std::sregex_iterator at(page.begin(), page.end(), input), end; at != end; ++at) {
    browser.inputValues[(*at)[2]] =
        base::Replace(base::Replace((*at)[4].str(), "&quot;", "\""), "&#39;", "'");
    if ((*at)[1] == "checkbox") browser.inputChecked[(*at)[2]] = false;
  }
}

class ViewsTest : public CoreTest {
 protected:
  ViewsTest() {
    const auto path = machine.home / "tmp" / "marovane" / "Marovane.mdb";
    CreateRecords(machine.realDatabases, path);
    db = machine.realDatabases.Open(path, base::Databases::Mode::kReadWrite);
    app.gConnRecords = "Data Source=" + path.string() + ";";
    const auto catalogue = machine.home / "tmp" / "tolvex" / "data" / "err4list.mdb";
    machine.realFiles.CreateFolder(catalogue.parent_path(), true);
    machine.realDatabases.Create(catalogue)->RunScript(
        "create table errtype (errtype_id text, errtype text);"
        "create table errmain (errcode text, outline text);"
        "insert into errtype values ('VF', '動詞形式'), (' AG ', '主詞與動詞一致'), ('PR', '介系詞');"
        "insert into errmain values ('AG02', '第二個'), ('AG01', ' 第三人稱單數 '), ('VF01', null),"
        "  ('PR01', '介系詞用錯');");
    app.gConnErrList = "Data Source=" + catalogue.string() + ";";
  }

  struct Row {
    const char* id;
    const char* day;
    const char* sentence;
    const char* upload = "N";
    const char* essayId = "0";
    const char* errcode = "AG01";
  };
  /// A right sentence on each of the days, whose id is the day.
  void PutOkOn(std::initializer_list<const char*> days) {
    for (const char* day : days) PutOk({day, day, "a"});
  }
  void PutOk(const Row& row) {
    db->Run("insert into oksentence values (?, 'N', ?, ?, ?, ?, '0', 'N')",
            {row.id, row.sentence, row.day, row.upload, row.essayId});
  }
  void PutErr(const Row& row) {
    db->Run("insert into errsentence values (?, ?, ?, ?, ?, ?, '0', 'N')",
            {row.id, row.sentence, row.errcode, row.day, row.upload, row.essayId});
  }

  /// First columns of all rows, joined.
  std::string Query(const std::string& sql) {
    std::string text;
    db->Run(sql, {}, [&](const base::DbRow& row) { text += (text.empty() ? "" : " ") + row.Text(0); });
    return text;
  }

  /// Marks boxes of a page.
  static void Check(WebBrowser& page, std::initializer_list<int> rows) {
    for (const int row : rows) page.inputChecked["chk" + std::to_string(row)] = true;
  }
  void TearDown() override { EXPECT_EQ(machine.user.Expected(), 0U) << "all expected messages were shown"; }

  std::unique_ptr<base::Database> db;
  RecordDb records{program};
  ErrListDb errList{program};
};

}  // namespace marovane
