// Texts of the toolkit's own dialogs in the learner's language.
#pragma once

namespace marovane {

/// Has the application translate them: the toolkit comes without its translations.
void InstallToolkitTexts();

}  // namespace marovane
