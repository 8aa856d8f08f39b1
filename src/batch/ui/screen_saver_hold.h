#pragma once

#include <QString>
#include <memory>

namespace ml::batch::ui {

/// Keeps the screen saver away as long as it lives, where the desktop has one to ask.
class ScreenSaverHold final {
 public:
  explicit ScreenSaverHold(const QString& reason);
  ~ScreenSaverHold();
  ScreenSaverHold(const ScreenSaverHold&) = delete;
  ScreenSaverHold& operator=(const ScreenSaverHold&) = delete;

 private:
  struct Cookie;
  std::shared_ptr<Cookie> cookie_;  ///< null without a desktop
};

}  // namespace ml::batch::ui
