#pragma once

#include <QPlainTextEdit>
#include <string_view>

namespace ml::app {

/// The text about the image on show: read, selected and copied, never edited.
class SummaryPane final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit SummaryPane(QWidget* parent = nullptr);
  /// `text` is bytes; "\n" ends a line.
  void SetText(std::string_view text);
  QSize sizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
};

}  // namespace ml::app
