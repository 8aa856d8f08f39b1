#pragma once

#include <QLineEdit>
#include <string>

#include "platform/ui/qt_text.h"

namespace ml::app {

/// A line for a name or path that gives back the very bytes it was filled with unless somebody types.
class ByteLine final : public QLineEdit {
 public:
  explicit ByteLine(const std::string& bytes) { SetBytes(bytes); }
  void SetBytes(const std::string& bytes) {
    bytes_ = bytes;
    setText(platform::ui::ToQString(bytes));
  }
  std::string Bytes() const { return isModified() ? text().toStdString() : bytes_; }

 private:
  std::string bytes_;
};

}  // namespace ml::app
