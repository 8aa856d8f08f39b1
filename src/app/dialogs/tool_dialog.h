#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QGridLayout;
class QLabel;
class QVBoxLayout;

namespace ml::app {

/// The images that a tool may be used on, full paths.
struct ToolImages {
  std::string directory;
  std::vector<std::string> selected, all;  ///< `all` is not empty

  const std::string& First() const { return selected.empty() ? all.front() : selected.front(); }
};

/// The dialog of a tool for the selected images or for all: a form, below it an example, and three buttons.
class ToolDialog : public QDialog {
 public:
  struct Texts {
    std::string_view title, selected, all;
    std::string_view pleaseSelect;  ///< said while nothing is selected
  };
  ToolDialog(QWidget& parent, const Texts& texts, const ToolImages& images);

  /// Shows the dialog at `place`, which is in the toolkit's own form and tells afterwards where it stood. False if the
  /// user cancelled.
  bool RunAt(std::string& place);
  /// Which button was pressed.
  bool ForAll() const { return all_; }

 protected:
  /// Where the fields go.
  QVBoxLayout& Fields() { return *fields_; }
  /// Adds `field`, of which `focus` takes the keyboard, to a grid of labels and fields; gives the label.
  static QLabel* AddField(QGridLayout& grid, const char* label, QWidget& field, QWidget& focus);
  /// Closes the dialog if Refusal() says nothing; `all` tells which button was pressed.
  void Answer(bool all);
  /// Why the tool cannot be used on these images with these values, a sentence.
  virtual std::optional<std::string> Refusal(const std::vector<std::string>& images) = 0;

  const ToolImages& images_;

 private:
  QVBoxLayout* fields_;
  bool all_ = false;
};

}  // namespace ml::app
