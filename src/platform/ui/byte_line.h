#pragma once

#include <QLineEdit>
#include <algorithm>
#include <string>

#include "platform/ui/qt_text.h"

namespace ml::platform::ui {

/// A line for a name, a path or another text of bytes that gives back the very bytes it was filled with as long as it
/// shows them: of a path also the directories in front of the first one that was edited.
class ByteLine final : public QLineEdit {
 public:
  explicit ByteLine(const std::string& bytes = {}, QWidget* parent = nullptr) : QLineEdit(parent) { SetBytes(bytes); }
  void SetBytes(const std::string& bytes) {
    bytes_ = bytes;
    setText(ToQString(bytes));
  }
  /// What the line shows, however it came there.
  std::string Bytes() const {
    const QChar slash = QLatin1Char('/');
    const QString shown = ToQString(bytes_) + slash;
    const QString now = text() + slash;
    const auto differs = std::mismatch(now.begin(), now.end(), shown.begin(), shown.end()).first;
    const auto same = now.first(now.first(differs - now.begin()).lastIndexOf(slash) + 1);
    auto bytes = FirstPieces(bytes_ + '/', same.count(slash)) + now.sliced(same.size()).toStdString();
    bytes.pop_back();
    return bytes;
  }

 private:
  /// `bytes` up to its slash number `count`; with it.
  static std::string FirstPieces(const std::string& bytes, qsizetype count) {
    std::size_t end = 0;
    for (; count > 0; --count) end = bytes.find('/', end) + 1;
    return bytes.substr(0, end);
  }

  std::string bytes_;
};

}  // namespace ml::platform::ui
