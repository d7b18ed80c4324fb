#include "views/check_list.h"

#include <map>

namespace marovane {

std::string CheckBoxId(int row) { return "chk" + std::to_string(row); }

CheckList::CheckList(WebBrowser& page, ControlArray<PictureBox, 2>& picSelectAll,
                     ControlArray<Label, 2>& lblSelectAll, ControlArray<Label, 2>& lblCheckAll)
    : page_(page), pictures_(picSelectAll), states_(lblCheckAll) {
  picSelectAll.On(&Control::Click, [this](int index) { picSelectAll_Click(index); });
  lblSelectAll.On(&Control::Click, [this](int index) { picSelectAll_Click(index); });
  for (int i = 0; i < pictures_.Count(); ++i) {
    pictures_(i).HandCursor = true;
    lblSelectAll(i).HandCursor = true;
    ShowState(i, false);
  }
}

void CheckList::Reset(int rows) {
  rowCount_ = rows;
  for (int i = 0; i < pictures_.Count(); ++i) ShowState(i, false);
}

std::vector<int> CheckList::CheckedRows() const {
  std::vector<int> rows;
  for (int row = 1; row <= rowCount_; ++row) {
    if (page_.Checked(CheckBoxId(row))) rows.push_back(row);
  }
  return rows;
}

std::vector<std::string> CheckList::CheckedKeys() const {
  std::vector<std::string> keys;
  for (const int row : CheckedRows()) keys.push_back(page_.Value(CheckBoxId(row)));
  return keys;
}

void CheckList::Uncheck(int row) { page_.SetChecked({{CheckBoxId(row), false}}); }

void CheckList::picSelectAll_Click(int index) {
  const bool isOn = states_(index).Caption() != "1";
  ShowState(index, isOn);
  std::map<std::string, bool> marks;
  for (int row = 1; row <= rowCount_; ++row) {
    const std::string id = CheckBoxId(row);
    marks[id] = index == 0 ? isOn : !page_.Checked(id);
  }
  page_.SetChecked(marks);
}

void CheckList::ShowState(int index, bool isOn) {
  states_(index).Caption = isOn ? "1" : "0";
  pictures_(index).Picture = isOn ? "check_on" : "check_off";
}

}  // namespace marovane
