#include "essay/room.h"

#include "essay/report_window.h"

EssayRoom::EssayRoom(Program& theProgram, RecordDb& theRecords, ErrListDb& theErrList)
    : program(theProgram),
      records(theRecords),
      errList(theErrList),
      frmEssay([this] { return std::make_shared<FrmEssay>(*this); }),
      frmEssayCompare([this] { return std::make_shared<FrmEssayCompare>(program); }) {}

void EssayRoom::ShowEssay(const std::string& essayId) {
  if (!program.app.gEssayMode) ShowEssayResultHtml(*this, essayId, true);
}
