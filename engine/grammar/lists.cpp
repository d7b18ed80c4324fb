#include "engine/grammar/lists.h"

#include <sstream>
#include <string>

namespace tolvex {

Lists::Lists(const RuleBook& rules) {
  std::istringstream names{std::string(kListNames)};
  for (std::string name; names >> name;) lists_.push_back(&rules.List(name));
}

}  // namespace tolvex
