// The exchange with the local check engine, through `registry.set` and one process a sentence.
#pragma once

class FrmMain;

/// Checks the sentence of the input box with `tolvex2.exe` and records the verdict. Throws RunTimeError when
/// the engine cannot be started; from then on every failure is passed over.
void PassStringToEngineLocal(FrmMain& frmMain);
