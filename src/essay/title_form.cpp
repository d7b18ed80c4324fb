#include "essay/title_form.h"

#include "base/text.h"
#include "essay/essay_context.h"

namespace marovane {

FrmEssayInputForm::FrmEssayInputForm(EssayContext& context)
    : ButtonWindow(context.program, "frmEssayInputForm", &AppState::gOpenEssayInputForm), context_(context) {
  txtInput.KeyDown = [this](int& keyCode) {
    if (keyCode == kKeyEnter) picButtons_Click(0);
  };
}

void FrmEssayInputForm::picButtons_Click(int index) {
  const auto& app = context_.program.app;
  fade_.Out();
  if (index == 0) return context_.StartOwnEssay(base::Trim(txtInput.Text()));
  if (app.gEdition == "XQD" && app.gWorkListOk) context_.frmEssayInputEdu->Show();
}

}  // namespace marovane
