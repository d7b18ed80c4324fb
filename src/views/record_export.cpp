#include "views/record_export.h"

#include "base/files.h"
#include "core/message.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

constexpr const char* kLineEnd = "\r\n";

void ShowNotWritten(Program& program, const base::Files::Path& path) {
  program.app.gProgressDetail = "無法寫入檔案「" + path.string() + "」，請檢查磁碟空間以及資料夾的寫入權限";
  ShowMessage(program, Message::kUnexpectedError);
}

}  // namespace

bool ExportSentences(Program& program, const std::string& path, const std::vector<std::string>& sentences,
                     bool paragraph) {
  std::string text;
  for (const auto& sentence : sentences) {
    text += sentence;
    if (!paragraph) {
      text += kLineEnd;
    } else {
      text += sentence.ends_with('.') ? " " : ". ";
    }
  }
  return ExportWholeText(program, path, text + kLineEnd);
}

bool ExportWholeText(Program& program, const std::string& path, const std::string& text) {
  base::Files& files = program.machine.files;
  base::Files::Path file = path;
  if (!file.has_extension()) file += ".txt";
  if (files.FileExists(file) && !Confirm(program, Message::kOverwriteFile)) return false;
  try {
    base::RewriteFile(files, file, text, false);
  } catch (const RunTimeError&) {
    ShowNotWritten(program, file);
    return false;
  }
  ShowMessage(program, Message::kExported);
  return true;
}

FrmBindSelect::FrmBindSelect(Program& program)
    : ButtonWindow(program, "frmBindSelect", &AppState::gOpenBindSelect) {
  lblOption(0).Caption = "將句子併為一個段落";
  lblOption(1).Caption = "句子各自獨立為一行";
  lblOption.On(&Control::Click, [this](int index) { lblOption_Click(index); });
  for (int i = 0; i < lblOption.Count(); ++i) lblOption(i).HandCursor = true;
}

std::optional<bool> FrmBindSelect::AskParagraph() {
  ShowModal();
  if (lblOpt.Caption().empty()) return std::nullopt;
  return lblOpt.Caption() == "1";
}

void FrmBindSelect::lblOption_Click(int index) {
  for (int i = 0; i < optLink.Count(); ++i) optLink(i).Value = i == index;
}

void FrmBindSelect::picButtons_Click(int index) {
  const bool isParagraph = optLink(0).Value;
  lblOpt.Caption = index != 0 ? "" : isParagraph ? "1" : "2";
  closeForm();
}

}  // namespace marovane
