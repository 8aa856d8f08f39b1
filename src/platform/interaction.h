#pragma once

#include <optional>
#include <string>

namespace ml::platform {

enum class BoxIcon { Information, Warning, Error, Question };
enum class Button { Ok, Cancel, Yes, No };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };

/// A message box: the text as it stands ("\n" ends a line), its caption, its picture and its buttons.
struct MessageBox {
  std::string text;
  std::string caption = "Marrowlantern";
  BoxIcon icon = BoxIcon::Information;
  Buttons buttons = Buttons::Ok;
};

/// What to do with a file that is in the way.
enum class FileExistsAnswer { Overwrite, OverwriteAll, Skip, SkipAll, SaveAs, Cancel };

/// How engine code asks the user. Calls block until answered; the window answers on its own thread, the
/// command line by its options, a test by its script. No lock may be held across a call.
class Interaction {
 public:
  struct CheckedAnswer {
    Button button = Button::Cancel;
    bool checked = false;
  };
  /// What a file dialog is opened with; `filter` has the form "Name|*.a;*.b|All files (*.*)|*.*||".
  struct SaveAsQuestion {
    std::string title, filter, defaultExtension, start;
  };

  virtual ~Interaction() = default;
  /// A box with only an OK button.
  virtual void message(const MessageBox& box) = 0;
  [[nodiscard]] virtual Button ask(const MessageBox& box) = 0;
  /// A question with a check box labelled `checkText`.
  [[nodiscard]] virtual CheckedAnswer askCheck(const MessageBox& box, const std::string& checkText) = 0;
  /// Nothing if the user cancelled.
  [[nodiscard]] virtual std::optional<std::string> saveAs(const SaveAsQuestion& question) = 0;
  [[nodiscard]] virtual FileExistsAnswer fileExists(const std::string& path) = 0;
};

}  // namespace ml::platform
