// The exchange with the web engine, through `p_passWebEngine.asp`.
#pragma once

class FrmMain;

/// Checks the sentence of the input box with the allotted web engine and records the verdict. Throws
/// RunTimeError for a broken transfer and a failing record.
void PassStringToEngineWeb(FrmMain& frmMain);
