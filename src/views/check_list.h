// The boxes of a page with one row a record, the two switches that mark them all, and the windows that have
// such a page.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/shell_window.h"
#include "platform/timer.h"
#include "platform/web_browser.h"

namespace marovane {

/// Rows count from 1. Row n has a box with the id "chk" + n, whose value is the record's key.
class CheckList {
 public:
  /// Switch 0 selects all or none, switch 1 inverts. The state of each, "1" or "0", is in its
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

/// A window with a check list and N buttons for what is done with the marked rows.
template <int N>
class ListWindow : public ButtonWindow<N> {
 public:
  /// Number of marked rows.
  int GetCheckCounts() const { return list_.CheckedCount(); }

  WebBrowser webHtml{*this, "webHtml"};
  ControlArray<PictureBox, 2> picSelectAll{*this, "picSelectAll"};
  ControlArray<Label, 2> lblSelectAll{*this, "lblSelectAll"}, lblCheckAll{*this, "lblCheckAll"};
  Timer tmrMessage{this->machine.loop, 1000};  ///< runs from a deletion to the message about it

 protected:
  ListWindow(Program& program, std::string name, bool AppState::*isOpen)
      : ButtonWindow<N>(program, std::move(name), isOpen) {
    tmrMessage.onTick = [this] {
      tmrMessage.Enabled = false;
      ShowDeleted();
    };
  }

  /// Says that rows were deleted, and shows those that are left.
  virtual void ShowDeleted() = 0;

  CheckList list_{webHtml, picSelectAll, lblSelectAll, lblCheckAll};
};

}  // namespace marovane
