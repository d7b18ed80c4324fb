#include "core/provisioning.h"

#include "core/places.h"
#include "core/program.h"
#include "platform/environment.h"
#include "platform/files.h"

void UnpackDataFiles(Program& program) {
  Files& files = program.machine.files;
  const Files::Path root = WorkingRoot(program.machine.environment);
  const Files::Path data = program.machine.environment.programFolder / "data";
  files.CreateFolder(root / "marovane", true);
  files.CreateFolder(root / "tolvex" / "data", true);
  const auto records = root / "marovane" / "Marovane.mdb";
  if (!files.FileExists(records)) CopyFile(files, data / "Marovane.mdb", records);
  const auto errors = root / "tolvex" / "data" / "err4list.mdb";
  if (!files.FileExists(errors) || files.Read(errors) != files.Read(data / "err4list.mdb")) {
    CopyFile(files, data / "err4list.mdb", errors);
  }
}
