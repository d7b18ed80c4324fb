#include "qt/web_library.h"

#include "platform/run_time_error.h"
#include "qt/text_convert.h"

namespace marovane {

std::unique_ptr<WebPane> WebLibrary::MakePane() {
  using Maker = WebPane* (*)();
  const auto make = reinterpret_cast<Maker>(library_.resolve("MakeMarovaneWebPane"));
  if (make == nullptr) throw RunTimeError("no web engine: " + Utf8(library_.errorString()));
  return std::unique_ptr<WebPane>(make());
}

}  // namespace marovane
