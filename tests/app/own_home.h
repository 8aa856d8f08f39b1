#pragma once

#include <cstdlib>

#include "support/temp_dir.h"

namespace ml::app {

/// Puts home and trash of this program into a directory of its own. The desktop's libraries ask for them once in the
/// life of the program.
inline void UseOwnHome() {
  static const test::TempDir home;
  for (const auto* variable : {"HOME", "XDG_DATA_HOME"}) ::setenv(variable, home.Path().c_str(), 1);
}

}  // namespace ml::app
