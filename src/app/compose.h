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
  RecordDb records;
  ErrListDb errList;
  Window<FrmStartUp> frmStartUp;
  Window<FrmMain> frmMain;
  Window<FrmSplash> frmSplash;
  Window<FrmMenu> frmMenu;
  Window<FrmDebug> frmDebug;
  Window<FrmBrowser> frmBrowser;
  Window<FrmCollocation> frmCollocation;
  Window<FrmSuggest> frmSuggest;
  Window<FrmErrSentence> frmErrSentence;
  EssayContext essay;
  Window<FrmBindSelect> frmBindSelect;
  Window<FrmSentences> frmSentences;
  Window<FrmDiary> frmDiary;
  Window<FrmErrList> frmErrList;
  Window<FrmUpload> frmUpload;
  Window<FrmSyncLogin> frmSyncLogin;
  Window<FrmSetup> frmSetup;
  Window<FrmPassword> frmPassword;
  Window<FrmFeedback> frmFeedback;
  Window<FrmPublisher> frmPublisher;
  Window<FrmXQDLogin> frmXQDLogin;
};

}  // namespace marovane
