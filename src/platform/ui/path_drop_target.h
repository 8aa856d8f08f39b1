#pragma once

#include <QObject>
#include <string>
#include <vector>

class QWidget;

namespace ml::platform::ui {

/// Makes a widget take files and directories dropped from other programs. Lives as a child of that widget.
class PathDropTarget final : public QObject {
  Q_OBJECT

 public:
  /// For a scroll area pass its viewport.
  explicit PathDropTarget(QWidget* widget);

 Q_SIGNALS:
  /// Full paths, at least one.
  void pathsDropped(const std::vector<std::string>& paths);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace ml::platform::ui
