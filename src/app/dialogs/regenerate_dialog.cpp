#include "app/dialogs/regenerate_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "catalogue/job_names.h"

namespace ml::app {
namespace {

constexpr int kSmallestWidth = 160, kLargestWidth = 10'000, kWidthStep = 100, kBestQuality = 100;
constexpr int kTextWidth = 52;  ///< in characters

class RegenerateDialog final : public QDialog {
 public:
  RegenerateDialog(QWidget& parent, int count, const imagefiles::EmbeddedJpegSettings& start) : QDialog(&parent) {
    setWindowTitle(QLatin1String(catalogue::kRegenerateJob));
    auto* layout = new QVBoxLayout(this);
    auto* what = new QLabel(
        QStringLiteral("The raw data are developed as they were shot. The JPEG made of them takes the place of the one "
                       "in the file; the raw data stay as they are."));
    what->setWordWrap(true);
    what->setMinimumWidth(fontMetrics().averageCharWidth() * kTextWidth);
    layout->addWidget(what);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    width_.setRange(kSmallestWidth, kLargestWidth);
    width_.setSingleStep(kWidthStep);
    width_.setSuffix(QStringLiteral(" pixels"));
    width_.setValue(start.width);
    form->addRow(QStringLiteral("Largest &width:"), &width_);
    quality_.setRange(0, kBestQuality);
    quality_.setValue(start.quality);
    form->addRow(QStringLiteral("&Quality:"), &quality_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    const auto text = QStringLiteral("&Regenerate %1 JPEG%2").arg(count).arg(QLatin1String(count == 1 ? "" : "s"));
    layout->addWidget(buttons);  // a dialog must have the button first
    buttons->addButton(text, QDialogButtonBox::AcceptRole)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  }

  imagefiles::EmbeddedJpegSettings Settings() const { return {width_.value(), quality_.value()}; }

 private:
  QSpinBox width_, quality_;
};

}  // namespace

std::optional<imagefiles::EmbeddedJpegSettings> AskRegenerate(QWidget& parent, int count,
                                                              const imagefiles::EmbeddedJpegSettings& start) {
  RegenerateDialog dialog(parent, count, start);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Settings();
}

}  // namespace ml::app
