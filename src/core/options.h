// Options of which one is chosen.
#pragma once

#include "platform/controls.h"

namespace marovane {

/// Sets the option of an index and clears the others; an index out of bounds clears all.
template <int N>
void SelectOption(ControlArray<OptionButton, N>& options, int index) {
  // The chosen one first: a group on the screen does not let go of its only choice.
  if (index >= 0 && index < N) options(index).Value = true;
  for (int i = 0; i < N; ++i) {
    if (i != index) options(i).Value = false;
  }
}

/// The index of the chosen option, -1 for none.
template <int N>
int SelectedOption(ControlArray<OptionButton, N>& options) {
  for (int i = 0; i < N; ++i) {
    if (options(i).Value) return i;
  }
  return -1;
}

}  // namespace marovane
