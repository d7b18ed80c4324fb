// Sentences as a text file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/shell_window.h"

namespace marovane {

/// Writes a text file (UTF-8), which it replaces whole, and shows the user how that went. Asks before it
/// replaces a file. A failure leaves no part of a file.
/// @param path the ending ".txt" is added to a name without one
/// @return true when the file has been written
bool ExportWholeText(Program& program, const std::string& path, const std::string& text);
/// The same with sentences, one a line (CR LF); or, as a paragraph, each with a full stop at its end, if it
/// has none, and a blank after it. The text's last line is ended too.
bool ExportSentences(Program& program, const std::string& path, const std::vector<std::string>& sentences,
                     bool paragraph);

/// Asks how the sentences are to be joined.
class FrmBindSelect : public ButtonWindow<2>, public HallWindow {
 public:
  explicit FrmBindSelect(Program& program);

  Form& AsForm() override { return *this; }
  /// Shows the window and waits. True: one paragraph; nothing when the user gave up.
  std::optional<bool> AskParagraph();

  void imgClose_Click() override { picButtons_Click(1); }

  ControlArray<OptionButton, 2> optLink{*this, "optLink"};
  ControlArray<Label, 2> lblOption{*this, "lblOption"};
  Label lblOpt{*this, "lblOpt"};  ///< "1" a paragraph, "2" line by line, "" no answer

 private:
  void lblOption_Click(int index);
  void picButtons_Click(int index) override;
};

}  // namespace marovane
