#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

class QLabel;

namespace ml::platform::ui {
class ByteLine;
}

namespace ml::app {

/// A line for a path with a button to choose it, and below it what is to be said about the path.
class PathField final : public QWidget {
  Q_OBJECT

 public:
  /// Lets the user choose, beginning at the path in the line; nothing if cancelled.
  using Browse = std::function<std::optional<std::string>(const std::string& start)>;

  /// A path that does not begin with "/" is meant from `base` on.
  PathField(const std::string& path, std::string base, Browse browse, QWidget* parent);

  /// Full, without blanks around it; empty if nothing was typed.
  std::string Path() const;
  void SetRemark(const std::string& remark);
  /// For the label, and for the accessible name.
  QWidget& Line();

 Q_SIGNALS:
  void edited();

 private:
  std::string base_;
  platform::ui::ByteLine* line_;
  QLabel* remark_;
};

}  // namespace ml::app
