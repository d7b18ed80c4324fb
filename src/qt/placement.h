// Where a window stands, so that a person can see and reach all of it.
#pragma once

#include <QRect>

namespace marovane {

/// False on Wayland, where the compositor alone places windows, stacks them and gives the keyboard to them.
bool ProgramPlacesWindows();

/// The nearest place for a window that is inside the usable area and clear of the strip in which one types. A
/// window that may be resized is made smaller where it must; of any other one the foot is covered or off the
/// screen.
/// @param window the visible frame, without its shadow
/// @param usable a screen without its panels
/// @param strip the strip with its menu slid out; empty for none
QRect PlaceInSight(const QRect& window, const QRect& usable, const QRect& strip, bool isResizable);

/// True when no part of a window is cut off or under a panel.
bool IsOnScreen(const QRect& window);

/// True when a window can be taken hold of: its middle is on a screen.
bool IsWithinReach(const QRect& window);

}  // namespace marovane
