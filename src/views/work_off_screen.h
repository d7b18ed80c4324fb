// Longer work that is alone on the screen.
#pragma once

#include <functional>

namespace marovane {

struct Program;
struct Progress;

/// Moves the main window off the screen, shows a progress box and works. Afterwards, and after an error, the
/// main window is back in its place.
void WorkOffScreen(Program& program, const Progress& progress, const std::function<void()>& work);

}  // namespace marovane
