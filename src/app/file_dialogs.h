#pragma once

#include <optional>
#include <string>

class QWidget;

namespace ml::app {

/// What a dialog for choosing an existing file is opened with; see Interaction::SaveAsQuestion.
struct OpenFileQuestion {
  std::string title, filter, start;
  std::string checkText = {};  ///< label of a check box below the kinds of file; none if empty
  bool checked = false;
};
struct OpenFileAnswer {
  std::string path;
  bool checked = false;
};

/// Both: nothing if the user cancelled.
std::optional<OpenFileAnswer> OpenFile(QWidget& parent, const OpenFileQuestion& question);
std::optional<std::string> ChooseDirectory(QWidget& parent, const std::string& start);

}  // namespace ml::app
