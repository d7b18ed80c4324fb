#include "core/error_report.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <map>

#include "base/day.h"
#include "base/files.h"
#include "core/data_paths.h"
#include "core/message.h"
#include "core/program.h"
#include "core/resume_next.h"
#include "core/window_shell.h"
#include "platform/environment.h"
#include "platform/window_system.h"

namespace marovane {

namespace {

/// Where a window was when an event began.
struct Place {
  bool enabled = false;
  int left = 0;
};
using Places = std::map<const Form*, Place>;

Places PlacesOf(const Program& program) {
  Places places;
  for (const Form* form : program.machine.windows.OpenForms()) places[form] = {form->Enabled, form->Left};
  return places;
}

// A window that the event itself has opened should be where it can be seen, if it is to be seen at all.
void BringBack(Form& form, const Places& before) {
  const auto known = before.find(&form);
  const bool isNew = known == before.end();
  if (isNew || known->second.enabled) form.Enabled = true;
  if (form.Left > kAway) return;
  if (isNew && form.Visible) CenterForm(form);
  if (!isNew && known->second.left > kAway) form.Left = known->second.left;
}

void WriteErrorLog(Program& program, const std::exception& error) {
  const base::LocalTime now = program.machine.loop.Now();
  const std::string folder = TraceFolder(program.machine.environment);
  const auto time =
      std::chrono::duration_cast<std::chrono::seconds>(now - std::chrono::floor<std::chrono::days>(now));
  const std::string line =
      fmt::format("{} {:%H:%M:%S} {}\n", base::IsoDay(base::DayOf(now)), time, error.what());
  program.machine.files.CreateFolder(folder, true);
  program.machine.files.Append(folder + "/error.log", line);
}

void CloseProgressBox(Program& program) {
  if (program.frmMessage.IsLoaded() && program.frmMessage->IsProgressBox()) program.frmMessage->closeForm();
}

}  // namespace

void ReportUnhandledErrors(Program& program) {
  EventLoop& loop = program.machine.loop;
  loop.onHandler = [&program] {
    return [&program, before = PlacesOf(program)] {
      for (Form* form : program.machine.windows.OpenForms()) BringBack(*form, before);
    };
  };
  loop.onUnhandledError = [&program](const std::exception& error) { ReportUnhandledError(program, error); };
}

void ReportUnhandledError(Program& program, const std::exception& error) {
  if (dynamic_cast<const BrokenOff*>(&error) != nullptr) return CloseProgressBox(program);
  // A trace that cannot be written must not hide the error itself.
  RunSkippingFailures({[&] { WriteErrorLog(program, error); }});
  const std::string answer = program.app.gMsgResult;  // to a question of another window
  program.app.gProgressDetail = error.what();
  FrmMessage::MessageBox(program, Message::kUnexpectedError);
  program.app.gMsgResult = answer;
}

}  // namespace marovane
