#include "essay/essay_context.h"

#include "core/text_utility.h"
#include "core/typed_text.h"
#include "essay/report_window.h"
#include "essay/text_rules.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

namespace marovane {

EssayContext::EssayContext(Program& theProgram, RecordDb& theRecords, ErrListDb& theErrList)
    : program(theProgram),
      records(theRecords),
      errList(theErrList),
      frmEssay(*this),
      frmEssayCompare(program),
      frmEssayCollect(*this),
      frmEssayInputEdu(*this),
      frmEssayInputForm(*this) {}

void EssayContext::StartEssayWith(const std::string& text) {
  StartOwnEssay("");
  frmEssay->ShowTextFirst(JoinWrappedLines(TidyTyped(text)));
}

void EssayContext::ShowEssay(const std::string& essayId) {
  if (!program.app.gEssayMode) ShowEssayResultHtml(*this, essayId, true);
}

void EssayContext::ShowOldEssay(const std::string& essayId) {
  if (program.app.gEssayMode) return;
  program.app.gEssayNoListReturn = true;
  ShowEssay(essayId);
}

void EssayContext::StartEssay() {
  if (program.app.gEssayMode) return frmEssay->BringToFront();
  program.app.gEssayReportShown = false;
  frmEssay.Unload();
  frmEssayCollect.Unload();
  frmEssayCompare.Unload();
  frmEssay->Show();
  frmEssay->ShowDraft();
}

void EssayContext::StartOwnEssay(const std::string& title) {
  auto& app = program.app;
  if (app.gEssayMode) return frmEssay->BringToFront();
  app.gEssayQuiz = DefaultEssayTitle(title, program.machine.loop.Now());
  app.gEssayStartRequested = true;
  app.gEssayWorkId = MakeRecId(program);
  StartEssay();
}

}  // namespace marovane
