// From the start of the process to the first key that the input box accepts, without the time that the splash
// window takes by design, and what the process then holds.
#include <fmt/format.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTextEdit>
#include <QWidget>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/desktop_program.h"
#include "qt/qt_application.h"

using namespace marovane;

namespace {

double SecondsSinceBoot() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

// Field 22 of /proc/self/stat, in clock ticks since boot.
double ProcessStart() {
  std::ifstream in("/proc/self/stat");
  std::string text((std::istreambuf_iterator<char>(in)), {});
  std::istringstream fields(text.substr(text.rfind(')') + 2));
  std::string field;
  for (int i = 3; i <= 22; ++i) fields >> field;
  return std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double ResidentMegabytes() {
  long pages = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / (1 << 20);
}

// A key as the window system would deliver it, into the text of the input box.
void TypeFirstKey(DesktopProgram& program) {
  FrmMain& frmMain = *program.Rooms().frmMain;
  frmMain.txtInput.SetFocus();
  QWidget* box = nullptr;
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->objectName() == "txtInput" && qobject_cast<QTextEdit*>(widget) != nullptr) box = widget;
  }
  QKeyEvent press(QEvent::KeyPress, Qt::Key_H, Qt::ShiftModifier, "H");
  QApplication::sendEvent(box, &press);
  program.Loop().WaitUntil([&] { return frmMain.txtInput.Text() == "H"; });
}

void Measure() {
  constexpr double kFadeIn = 80;  // eight ticks of 10 ms, which the splash waits for
  DesktopProgram program("");
  if (!program.Start()) throw std::runtime_error("the program ended while it started");
  TypeFirstKey(program);
  const double total = (SecondsSinceBoot() - ProcessStart()) * 1000;
  fmt::print("start to first key, with the splash's fade       {:7.0f} ms\n", total);
  fmt::print("start to first key, without it                   {:7.0f} ms\n", total - kFadeIn);
  fmt::print("resident memory before the first page            {:7.1f} MB\n", ResidentMegabytes());
  fmt::print("web engine loaded                                {:>7}\n",
             program.Windows().HasWebEngine() ? "yes" : "no");
}

}  // namespace

int main(int argc, char** argv) {
  std::string pattern = (std::filesystem::temp_directory_path() / "marovane-bench-XXXXXX").string();
  const std::filesystem::path home = mkdtemp(pattern.data());
  setenv("HOME", home.c_str(), 1);
  for (const char* variable : {"MAROVANE_HOME", "TMP", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
    unsetenv(variable);
  PrepareApplication();
  QApplication application(argc, argv);
  ConfigureApplication(QString::fromStdString(ReadHostEnvironment("").programFolder / "ui"));
  Measure();
  std::filesystem::remove_all(home);
}
