#include "essay/room.h"

#include "core/text_utility.h"
#include "essay/report_window.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

EssayRoom::EssayRoom(Program& theProgram, RecordDb& theRecords, ErrListDb& theErrList)
    : program(theProgram),
      records(theRecords),
      errList(theErrList),
      frmEssay([this] { return std::make_shared<FrmEssay>(*this); }),
      frmEssayCompare([this] { return std::make_shared<FrmEssayCompare>(program); }) {}

void EssayRoom::ShowEssay(const std::string& essayId) {
  if (!program.app.gEssayMode) ShowEssayResultHtml(*this, essayId, true);
}

void EssayRoom::StartOwnEssay(const std::string& title) {
  auto& app = program.app;
  const LocalTime now = program.machine.loop.Now();
  app.gEssayQuiz = DefaultEssayTitle(title, now);
  app.gEssayStartRequested = true;
  app.gEssayNoListReturn = true;
  app.gEssayWorkId = MakeRecId(app, now);
  app.gEssayReportShown = false;
  frmEssay.Unload();
  if (app.gOpenEssayCollect && program.hall.frmEssayCollect) program.hall.frmEssayCollect->AsForm().Unload();
  frmEssayCompare.Unload();
  frmEssay->Show();
}
