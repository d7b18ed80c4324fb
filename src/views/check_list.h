// The boxes of a page with one row a record, and the two switches that mark them all.
#pragma once

#include <string>
#include <vector>

#include "platform/web_browser.h"

namespace marovane {

/// Rows count from 1. Row n has a box with the id "chk" + n, whose value is the record's key.
class CheckList {
 public:
  /// Switch 0 selects all or none, switch 1 inverts. The state of each, "1" or "0", stands in its
  /// `lblCheckAll`.
  CheckList(WebBrowser& page, ControlArray<PictureBox, 2>& picSelectAll, ControlArray<Label, 2>& lblSelectAll,
            ControlArray<Label, 2>& lblCheckAll);

  /// A new page is shown: no row of it is marked.
  void Reset(int rows);
  int RowCount() const { return rowCount_; }
  int CheckedCount() const { return static_cast<int>(CheckedRows().size()); }
  std::vector<int> CheckedRows() const;
  std::vector<std::string> CheckedKeys() const;
  void Uncheck(int row);
  void picSelectAll_Click(int index);

 private:
  void ShowState(int index, bool isOn);

  WebBrowser& page_;
  ControlArray<PictureBox, 2>& pictures_;
  ControlArray<Label, 2>& states_;
  int rowCount_ = 0;
};

/// Id of the box of a row.
std::string CheckBoxId(int row);

}  // namespace marovane
