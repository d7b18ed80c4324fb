#include "core/error_report.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "core/message.h"
#include "core/places.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "core/window_shell.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/run_time_error.h"
#include "platform/window_system.h"

namespace {

void BringWindowsBack(Program& program) {
  constexpr int kOffScreen = -20000;
  for (Form* form : program.machine.windows.OpenForms()) {
    form->Enabled = true;
    if (form->Left <= kOffScreen) CenterForm(*form);
  }
}

void WriteErrorLog(Program& program, const std::exception& error) {
  const LocalTime now = program.machine.loop.Now();
  const std::string folder = TraceFolder(program.machine.environment);
  const auto time =
      std::chrono::duration_cast<std::chrono::seconds>(now - std::chrono::floor<std::chrono::days>(now));
  const std::string line =
      fmt::format("{} {:%H:%M:%S} {}\n", FormatDatePadded(DayOf(now), "-"), time, error.what());
  program.machine.files.CreateFolder(folder, true);
  program.machine.files.Append(folder + "/error.log", line);
}

}  // namespace

void ReportUnhandledError(Program& program, const std::exception& error) {
  BringWindowsBack(program);
  try {
    WriteErrorLog(program, error);
  } catch (const RunTimeError&) {
    // A trace that cannot be written must not hide the error itself.
  }
  program.app.gProgressDetail = error.what();
  FrmMessage::MessageBox(program, "404", 1, "OK", "1");
}
