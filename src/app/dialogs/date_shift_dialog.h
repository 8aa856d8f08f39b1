#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

class QWidget;

namespace ml::app {

struct DateShift {
  std::int64_t seconds = 0;
  bool all = false;        ///< all images of the directory instead of the selected ones
  bool fileTimes = false;  ///< the times of the files move as far
};

struct DateShiftQuestion {
  bool nothingSelected = false;
  bool fileTimes = false;
  std::string exampleName;                      ///< of the first image
  std::optional<std::time_t> exampleTime = {};  ///< when it was shot, if it says so
};

/// Nothing if the user cancelled or the clock was right.
std::optional<DateShift> AskDateShift(QWidget& parent, const DateShiftQuestion& question);

}  // namespace ml::app
