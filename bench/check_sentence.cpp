// The time of one check: in the program without the engine's own time, in the engine warm, and in the engine
// as a process of its own.
#include <stdlib.h>

#include "bench/benched_program.h"
#include "core/key_value_file.h"

using namespace marovane;

namespace {

// A few hundred different sentences of everyday length.
std::vector<std::string> Sentences() {
  std::vector<std::string> sentences;
  for (const char* who :
       {"My brother", "The teacher", "She", "Our neighbor", "The tall man", "Everyone", "He"}) {
    for (const char* does :
         {"reads a book", "go to the market", "has finished the work", "is waiting for a bus",
          "want to learn English", "opened the window", "can sings well"}) {
      for (const char* when : {"every day.", "in the morning.", "with his friends, because it is fun.",
                               "after school.", "before the rain started last night.", "at home."}) {
        sentences.push_back(std::string(who) + " " + does + " " + when);
      }
    }
  }
  return sentences;
}

void MeasureProgram(const std::filesystem::path& folder, const std::vector<std::string>& sentences) {
  bench::BenchedProgram program(
      folder, {"OK_0#0#page.htm#0#0", "OK_0#0#page.htm#0#0", "OK_1#VAG01#page.htm#He *go* to school."});
  program.composition->program.app.gAccountPassword = "secret";
  FrmMain& frmMain = *program.composition->frmMain;
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    frmMain.txtInput.SetFocus();
    frmMain.txtInput.Text = sentence;
    int keyCode = kKeyEnter;
    times.push_back(bench::Milliseconds([&] { frmMain.txtInput.KeyDown.Raise(keyCode); }));
  }
  bench::Print("program, without the engine", times);
}

void MeasureOneShot(const std::filesystem::path& folder, const std::vector<std::string>& sentences) {
  base::PosixFiles files;
  const Environment environment = ReadHostEnvironment("");
  const std::string registry = folder / "registry.set";
  const std::string command =
      "cd " + folder.string() + " && " + (environment.helperFolder / "tolvex2.exe").string() + " beta,074148";
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    ResetRegistrySet(files, registry, "RESET");
    ReadWriteSetFile(files, registry, "W", "sentence", sentence);
    int status = 0;
    times.push_back(bench::Milliseconds([&] { status = system(command.c_str()); }));
    if (status != 0) throw std::runtime_error("tolvex2.exe failed on: " + sentence);
    files.Delete(ReadWriteSetFile(files, registry, "R", "htm4chk", ""));
  }
  bench::Print("engine, one process a sentence", times);
}

}  // namespace

int main() {
  const TempFolder folder;
  const auto sentences = Sentences();
  MeasureProgram(folder.Path(), sentences);
  bench::MeasureEngine("engine, warm", sentences);
  MeasureOneShot(folder.Path(), sentences);
}
