#pragma once

#include <string>
#include <string_view>

#include "app/preferences/preference_row.h"

namespace ml::app {

/// What is to be told beside a field. A value that is `refused` cannot be taken over; with the others the program
/// gets along.
struct Remark {
  std::string text;  ///< a sentence; empty: all is well
  bool refused = false;
};

/// Looks at the value alone, and for a profile at the file.
Remark RemarkOn(const PreferenceRow& row, std::string_view value);

}  // namespace ml::app
