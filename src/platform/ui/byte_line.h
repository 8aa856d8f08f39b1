#pragma once

#include <QLineEdit>
#include <string>

#include "platform/ui/qt_text.h"

namespace ml::platform::ui {

/// A line for a name, a path or another text of bytes that gives back the very bytes it was filled with as long as it
/// shows them.
class ByteLine final : public QLineEdit {
 public:
  explicit ByteLine(const std::string& bytes = {}, QWidget* parent = nullptr) : QLineEdit(parent) { SetBytes(bytes); }
  void SetBytes(const std::string& bytes) {
    bytes_ = bytes;
    setText(ToQString(bytes));
  }
  /// What the line shows, however it came there.
  std::string Bytes() const { return text() == ToQString(bytes_) ? bytes_ : text().toStdString(); }

 private:
  std::string bytes_;
};

}  // namespace ml::platform::ui
