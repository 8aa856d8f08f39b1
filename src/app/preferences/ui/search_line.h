#pragma once

#include <QLineEdit>

namespace ml::app {

/// The line that settings are searched with. Its keys move among the answers instead of closing the window.
class SearchLine final : public QLineEdit {
  Q_OBJECT

 public:
  explicit SearchLine(QWidget* parent);

 Q_SIGNALS:
  /// 1 to the next answer, -1 to the one before.
  void stepWanted(int step);
  /// The keyboard is to go to the answer on show.
  void answerWanted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace ml::app
