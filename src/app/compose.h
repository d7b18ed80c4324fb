// All rooms put together: the one place that knows every window.
#pragma once

#include "checking/error_sentences.h"
#include "checking/main_window.h"
#include "checking/suggestions.h"
#include "core/debug_window.h"
#include "core/message.h"
#include "core/program.h"
#include "core/splash.h"
#include "core/start_up.h"
#include "core/text_menu.h"
#include "essay/essay_context.h"
#include "records/err_list_db.h"
#include "records/record_db.h"
#include "settings/campus_login.h"
#include "settings/feedback.h"
#include "settings/password.h"
#include "settings/publisher.h"
#include "settings/setup.h"
#include "sync/sync_login.h"
#include "sync/upload_window.h"
#include "views/day_sentences.h"
#include "views/diary.h"
#include "views/error_statistics.h"
#include "views/record_export.h"
#include "wordhelper/browser.h"
#include "wordhelper/collocation.h"

namespace marovane {

/// A program with all its windows behind the doors of its hall.
struct Composition {
  Composition(Machine& machine, InstallationValues installation);

  Program program;
  RecordDb records{program};
  ErrListDb errList{program};
  Window<FrmStartUp> frmStartUp{program};
  Window<FrmMain> frmMain{program, records};
  Window<FrmSplash> frmSplash{program};
  Window<FrmMenu> frmMenu{program};
  Window<FrmDebug> frmDebug{program};
  Window<FrmBrowser> frmBrowser{program};
  Window<FrmCollocation> frmCollocation{program};
  Window<FrmSuggest> frmSuggest{program, frmCollocation};
  Window<FrmErrSentence> frmErrSentence{program, records};
  EssayContext essay{program, records, errList};
  Window<FrmBindSelect> frmBindSelect{program};
  Window<FrmSentences> frmSentences{program, records, frmBindSelect};
  Window<FrmDiary> frmDiary{program, records, errList};
  Window<FrmErrList> frmErrList{program, records, errList};
  Window<FrmUpload> frmUpload{program, records};
  Window<FrmSyncLogin> frmSyncLogin{program};
  Window<FrmSetup> frmSetup{program};
  Window<FrmPassword> frmPassword{program};
  Window<FrmFeedback> frmFeedback{program};
  Window<FrmPublisher> frmPublisher{program};
  Window<FrmXQDLogin> frmXQDLogin{program};
};

}  // namespace marovane
