// Loads the library with the web engine at the first use.
#pragma once

#include <QLibrary>
#include <memory>

#include "qt/web_pane.h"

namespace marovane {

class WebLibrary {
 public:
  explicit WebLibrary(const QString& path) : library_(path) {}

  bool IsLoaded() const { return library_.isLoaded(); }
  /// A new pane. Throws RunTimeError when the library cannot be loaded.
  std::unique_ptr<WebPane> MakePane();

 private:
  QLibrary library_;
};

}  // namespace marovane
