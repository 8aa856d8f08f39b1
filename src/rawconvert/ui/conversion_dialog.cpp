#include "rawconvert/ui/conversion_dialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>

#include "platform/paths.h"
#include "platform/ui/qt_text.h"
#include "rawconvert/normalise_settings.h"
#include "rawconvert/ui/develop_page.h"
#include "rawconvert/ui/messages.h"
#include "rawconvert/ui/output_page.h"
#include "rawconvert/ui/post_page.h"

namespace ml::rawconvert::ui {

using platform::ui::ToQString;

ConversionDialog::ConversionDialog(const ConversionQuestion& question, const ConversionChoice& start,
                                   platform::Interaction& ask, QWidget* parent)
    : QDialog(parent), question_(question), choice_(start), ask_(ask), tabs_(new QTabWidget(this)) {
  setObjectName(QStringLiteral("conversionDialog"));
  const QString title = QString::fromLatin1(question.batch ? messages::kBatchTitle : messages::kOneTitle);
  const auto name = platform::ui::ToLabel(platform::FileName(question.path));
  setWindowTitle(question.batch ? title : title + QStringLiteral(" - ") + name);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs_, 1);
  AddPages();
  AddButtons();
  develop_->Show(choice_);
  if (post_ != nullptr) post_->Show(choice_.settings);
  output_->Show(choice_);
  shown_ = true;
  Changed();
  resize(FirstSize());
}

void ConversionDialog::AddPages() {
  develop_ = new DevelopPage(question_);
  tabs_->addTab(develop_, QStringLiteral("&Development"));
  connect(develop_, &DevelopPage::changed, this, &ConversionDialog::Changed);
  connect(develop_, &DevelopPage::spaceChanged, this, [this](const std::string& label) {
    if (!shown_) return;
    TakeProfilesOfSpace(choice_.profiles, question_.exif.model, label, question_.profiles, question_.finder);
    Changed();
  });
  if (!question_.batch) {
    post_ = new PostPage(question_);
    tabs_->addTab(post_, QStringLiteral("&Post-processing"));
    connect(post_, &PostPage::changed, this, &ConversionDialog::Changed);
  }
  output_ = new OutputPage(question_);
  tabs_->addTab(output_, QStringLiteral("&Output"));
  connect(output_, &OutputPage::changed, this, &ConversionDialog::Changed);
}

void ConversionDialog::AddButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  const auto add = [&](const QString& text, ConversionAnswer answer) {
    auto* button = buttons->addButton(text, QDialogButtonBox::ActionRole);
    connect(button, &QPushButton::clicked, this, [this, answer] { Finish(answer); });
    return button;
  };
  layout()->addWidget(buttons);
  if (question_.batch) {
    add(ToQString(messages::ConvertCount(question_.count)), ConversionAnswer::Several)->setDefault(true);
  } else {
    add(QString::fromLatin1(messages::kConvert), ConversionAnswer::One)->setDefault(true);
    add(QString::fromLatin1(question_.selection ? messages::kConvertSelected : messages::kConvertAll),
        ConversionAnswer::Several);
  }
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

/// As large as the largest page, if the screen is.
QSize ConversionDialog::FirstSize() const {
  constexpr int kTitleBar = 40;
  const auto room = screen()->availableSize() - QSize(0, kTitleBar);
  return sizeHint().expandedTo(QSize(fontMetrics().averageCharWidth() * 80, 0)).boundedTo(room);
}

ConversionAnswer ConversionDialog::RunAt(std::string& place) {
  answer_ = ConversionAnswer::Cancel;
  restoreGeometry(QByteArray(place.data(), static_cast<qsizetype>(place.size())));
  const bool accepted = exec() == QDialog::Accepted;
  place = saveGeometry().toStdString();
  return accepted ? answer_ : ConversionAnswer::Cancel;
}

void ConversionDialog::Changed() {
  if (!shown_) return;
  develop_->Take(choice_);
  if (post_ != nullptr) post_->Take(choice_.settings);
  output_->Take(choice_);
  output_->ShowResult(choice_);
}

bool ConversionDialog::TellComplaint() {
  const auto tell = [this](auto* page) {
    if (page == nullptr) return false;
    const auto complaint = page->FirstComplaint();
    if (!complaint) return false;
    tabs_->setCurrentWidget(page);
    ask_.message({.text = complaint->sentence, .icon = platform::BoxIcon::Warning});
    if (complaint->repair) complaint->repair();
    complaint->field->setFocus();
    return true;
  };
  return tell(develop_) || tell(post_) || tell(output_);
}

bool ConversionDialog::MayReduce() {
  if (!NeedsEightBitWarning(question_.family, choice_.format, choice_.settings.method)) return true;
  return ask_.ask({.text = EightBitWarning(question_.exif.model),
                   .icon = platform::BoxIcon::Warning,
                   .buttons = platform::Buttons::YesNo}) == platform::Button::Yes;
}

void ConversionDialog::Finish(ConversionAnswer answer) {
  Changed();
  if (TellComplaint() || !MayReduce()) return;
  answer_ = answer;
  accept();
}

}  // namespace ml::rawconvert::ui
