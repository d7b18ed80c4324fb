#include "essay/title_form.h"

#include "base/text.h"
#include "essay/room.h"

namespace marovane {

FrmEssayInputForm::FrmEssayInputForm(EssayRoom& room)
    : Form(room.program.machine, "frmEssayInputForm"), room_(room), fade_(*this), shell_(picBG, imgClose) {
  shell_.Add(picButtons, imgBtnOff, imgBtnOver, imgBtnOn);
  picButtons.On(&Control::Click, [this](int index) { picButtons_Click(index); });
  txtInput.KeyDown = [this](int& keyCode) {
    if (keyCode == kKeyEnter) picButtons_Click(0);
  };
  imgClose.Click = [this] { picButtons_Click(1); };
  QueryClose = [this] { picButtons_Click(1); };
}

void FrmEssayInputForm::Form_Load() {
  room_.program.app.gOpenEssayInputForm = true;
  Width = picBG.Width;
  Height = picBG.Height;
  CenterForm(*this);
  shell_.SetMouseIconHand();
  fade_.In();
}

void FrmEssayInputForm::Form_Unload() { room_.program.app.gOpenEssayInputForm = false; }

void FrmEssayInputForm::picButtons_Click(int index) {
  const auto& app = room_.program.app;
  fade_.Out();
  if (index == 0) return room_.StartOwnEssay(base::Trim(txtInput.Text()));
  if (app.gEdition == "XQD" && app.gWorkListOk) room_.frmEssayInputEdu->Show();
}

}  // namespace marovane
