// What both engine exchanges do before they differ.
#pragma once

#include <string>

#include "core/engine_exchange.h"

class FrmMain;

/// Normalises the input. False when it holds a character that no engine takes: the user has been told, and
/// nothing has been written.
/// @param sentence the text to check, not trimmed
bool AcceptInput(FrmMain& frmMain, std::string& sentence);

/// Disables the main window, clears the essay, shows the progress box, asks for the password if need be, and
/// writes the sentence into the exchange file. False when the check has to wait for the password.
bool OpenCheck(FrmMain& frmMain, const std::string& sentence);

/// Ends a check without an answer.
void StopCheck(FrmMain& frmMain);

/// Tells the user that the engine took too long, and waits for the answer.
void TellTimeout(FrmMain& frmMain);
