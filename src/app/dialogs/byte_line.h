#pragma once

#include <QLineEdit>
#include <string>

#include "platform/ui/qt_text.h"

namespace ml::app {

/// A line for a name or path that gives back the very bytes it was filled with as long as it shows them.
class ByteLine final : public QLineEdit {
 public:
  explicit ByteLine(const std::string& bytes) { SetBytes(bytes); }
  void SetBytes(const std::string& bytes) {
    bytes_ = bytes;
    setText(platform::ui::ToQString(bytes));
  }
  /// What the line shows, however it came there.
  std::string Bytes() const { return text() == platform::ui::ToQString(bytes_) ? bytes_ : text().toStdString(); }

 private:
  std::string bytes_;
};

}  // namespace ml::app
