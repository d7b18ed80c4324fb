// What the procedures about essays share: the program, its records, and the two windows.
#pragma once

#include <string>

#include "core/program.h"
#include "core/windows.h"
#include "essay/comparison.h"
#include "essay/session.h"
#include "platform/window.h"

class ErrListDb;
class RecordDb;

/// The windows are reached through their handles, since the essay window reloads itself for its report.
struct EssayRoom : public Essay {
  EssayRoom(Program& theProgram, RecordDb& theRecords, ErrListDb& theErrList);

  Form& AsForm() override { return *frmEssay; }
  /// Shows the report of an essay, unless another one is being walked through just now.
  void ShowEssay(const std::string& essayId) override;
  /// Shows the essay window afresh, for a topic of the learner's own.
  /// @param title "" for one made from the day
  void StartOwnEssay(const std::string& title);

  Program& program;
  RecordDb& records;
  ErrListDb& errList;
  Window<FrmEssay> frmEssay;
  Window<FrmEssayCompare> frmEssayCompare;
};
