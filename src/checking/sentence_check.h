// The check of the sentence in the input box: asked of an engine, recorded, shown.
#pragma once

#include "core/engine_client.h"

namespace marovane {

class FrmMain;

/// Checks the sentence of the input box with the allotted web engine and records the verdict. Throws
/// RunTimeError for a broken transfer and a failing record.
void PassStringToEngineWeb(FrmMain& frmMain);

/// The same with `tolvex2.exe`, through `registry.set` and one process per sentence. Throws RunTimeError when
/// the engine cannot be started; after that every failure is passed over.
void PassStringToEngineLocal(FrmMain& frmMain);

/// The client of the main window's engines.
EngineClient EngineFor(FrmMain& frmMain);

}  // namespace marovane
