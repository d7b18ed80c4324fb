// Why an update does not take place.
#pragma once

#include <stdexcept>

namespace updater {

/// Its text is for the learner. Whoever throws it has changed nothing that the program needs.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace updater
