#include "app/command_state.h"

namespace ml::app {

int Target(const CommandState& state) {
  const int index = state.mode == ViewMode::Thumbnails ? state.focusIndex : state.currentIndex;
  return index >= 0 && index < state.imageCount ? index : -1;
}

bool HaveTarget(const CommandState& state) { return Target(state) >= 0; }

bool HaveSomething(const CommandState& state) {
  return HaveTarget(state) || (state.mode != ViewMode::Main && state.selectedCount > 0);
}

}  // namespace ml::app
