// What the procedures about essays share: the program, its records, and the windows.
#pragma once

#include <functional>
#include <string>

#include "core/program.h"
#include "core/windows.h"
#include "essay/collection.h"
#include "essay/comparison.h"
#include "essay/session.h"
#include "essay/title_form.h"
#include "essay/topics.h"
#include "platform/window.h"

namespace marovane {

class ErrListDb;
class RecordDb;

/// The windows are reached through their handles, since the essay window reloads itself for its report.
struct EssayContext : public Essay {
  EssayContext(Program& theProgram, RecordDb& theRecords, ErrListDb& theErrList);

  Form& AsForm() override { return *frmEssay; }
  void StartEssayWith(const std::string& text) override;
  /// Shows the report of an essay, unless another one is being walked through just now.
  void ShowEssay(const std::string& essayId) override;
  /// Shows the report of an essay that was picked from a list.
  void ShowOldEssay(const std::string& essayId);
  /// Shows the essay window afresh, for the topic of gEssayWorkId. A walk that goes on is left alone.
  void StartEssay();
  /// The same for a new topic of the learner's own.
  /// @param title "" for one made from the day
  void StartOwnEssay(const std::string& title);

  /// Shows the page of the sentence that an engine has just judged, which is still on its way to the archive.
  /// Empty when the page is that of an earlier check.
  std::function<void()> showFreshPage;

  Program& program;
  RecordDb& records;
  ErrListDb& errList;
  Window<FrmEssay> frmEssay;
  Window<FrmEssayCompare> frmEssayCompare;
  Window<FrmEssayCollect> frmEssayCollect;
  Window<FrmEssayInputEdu> frmEssayInputEdu;
  Window<FrmEssayInputForm> frmEssayInputForm;
};

}  // namespace marovane
