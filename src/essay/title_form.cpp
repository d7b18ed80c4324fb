#include "essay/title_form.h"

#include "base/text.h"
#include "essay/room.h"

namespace marovane {

FrmEssayInputForm::FrmEssayInputForm(EssayRoom& room)
    : ButtonWindow(room.program, "frmEssayInputForm", &AppState::gOpenEssayInputForm), room_(room) {
  txtInput.KeyDown = [this](int& keyCode) {
    if (keyCode == kKeyEnter) picButtons_Click(0);
  };
}

void FrmEssayInputForm::picButtons_Click(int index) {
  const auto& app = room_.program.app;
  fade_.Out();
  if (index == 0) return room_.StartOwnEssay(base::Trim(txtInput.Text()));
  if (app.gEdition == "XQD" && app.gWorkListOk) room_.frmEssayInputEdu->Show();
}

}  // namespace marovane
