// All rooms put together: the one place that knows every window.
#pragma once

#include "checking/main_window.h"
#include "core/message.h"
#include "core/program.h"
#include "core/start_up.h"
#include "records/err_list_db.h"
#include "records/record_db.h"
#include "wordhelper/browser.h"

/// A program with all its windows behind the doors of its hall.
struct Composition {
  Composition(Machine& machine, InstallationValues installation);

  Program program;
  RecordDb records;
  ErrListDb errList;
  Window<FrmStartUp> frmStartUp;
  Window<FrmMain> frmMain;
  Window<FrmBrowser> frmBrowser;
};
