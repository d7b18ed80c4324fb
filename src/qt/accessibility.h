// What screen readers are told of the windows: the role, name and action of each control, and the window
// around them. The toolkit itself describes texts, lists and sliders; mere decoration is left out.
#pragma once

namespace marovane {

/// Has the toolkit describe the program's own windows and controls in this way. Wants a QApplication.
void InstallAccessibility();

}  // namespace marovane
