// The key codes that controllers know: those of the original toolkit, which name places on the keyboard.
#pragma once

class QKeyEvent;

namespace marovane {

/// The code of a key for KeyDown, 0 for one that has none. Signs count as on a US keyboard.
int KeyCodeOf(const QKeyEvent& event);

}  // namespace marovane
