#include "batch/ui/caption_dialog.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "batch/ui/slideshow_texts.h"
#include "platform/text.h"
#include "platform/ui/dialog_buttons.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

using platform::ui::ToQString;

/// What a setting holds.
constexpr std::size_t kMaxBytes = 511;
constexpr int kShownCharacters = 60;

}  // namespace

std::optional<std::string> AskCaptionFormat(QWidget& parent, const std::string& format) {
  QDialog dialog(&parent);
  dialog.setObjectName(QStringLiteral("slideshowCaption"));
  dialog.setWindowTitle(ToQString(texts::kCaptionTitle));
  auto* layout = new QVBoxLayout(&dialog);
  auto* prompt = new QLabel(ToQString(texts::kCaptionPrompt));
  layout->addWidget(prompt);
  auto* line = new QLineEdit(ToQString(format));
  line->setMaxLength(static_cast<int>(kMaxBytes));
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * kShownCharacters);
  prompt->setBuddy(line);
  layout->addWidget(line);
  layout->addStretch();
  platform::ui::AddOkAndCancel(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  if (!line->isModified()) return format;
  return std::string(platform::CutToBytes(line->text().toStdString(), kMaxBytes));
}

}  // namespace ml::batch::ui
