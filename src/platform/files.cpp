#include "platform/files.h"

void RewriteFile(Files& files, const Files::Path& path, std::string_view bytes, bool isPrivate) {
  Files::Path fresh = path;
  fresh += ".new";
  files.Write(fresh, bytes, isPrivate);
  files.Rename(fresh, path);
}

void CopyFile(Files& files, const Files::Path& from, const Files::Path& to) {
  RewriteFile(files, to, files.Read(from), false);
}
