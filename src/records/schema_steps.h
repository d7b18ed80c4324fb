// What brings the record database of an older version up to date.
#pragma once

#include <array>

#include "core/provisioning.h"

namespace marovane {

/// Step N brings a database of version N + 1 to version N + 2.
extern const std::array<const char*, kSchemaVersion - 1> kSchemaSteps;

}  // namespace marovane
