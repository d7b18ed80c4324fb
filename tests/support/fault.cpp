#include "tests/support/fault.h"

#include "platform/run_time_error.h"

namespace marovane {

void Fault::Step(const std::string& what) {
  ++steps_;
  if (killAt_ > 0 && steps_ >= killAt_) throw Killed{};
  if (steps_ == failAt_) throw RunTimeError(what + " failed, as the test wanted");
}

}  // namespace marovane
