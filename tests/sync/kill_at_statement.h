// Processes that are killed in the middle of their database work.
#pragma once

#include <functional>

namespace marovane {

/// Does the work in a process of its own, which is killed (SIGKILL) when its Nth SQL statement begins,
/// counted from 1 over all databases that the work opens. True when it was, false when it did not get there.
/// The work must not use databases that are open already.
bool IsKilledAtStatement(int n, const std::function<void()>& work);

}  // namespace marovane
