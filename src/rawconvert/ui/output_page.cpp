#include "rawconvert/ui/output_page.h"

#include "platform/ui/qt_text.h"
#include "rawconvert/batch/batch_conversion.h"
#include "rawconvert/ui/messages.h"

namespace ml::rawconvert::ui {
namespace {

using platform::ui::ToQString;

constexpr int kFolderWidth = 40, kLongestExample = 70;  ///< in characters

bool HasQuality(int format) {
  return format == static_cast<int>(OutputFormat::Jpeg) || format == static_cast<int>(OutputFormat::Jp2Bits8) ||
         format == static_cast<int>(OutputFormat::Jp2Bits16);
}

}  // namespace

OutputPage::OutputPage(const ConversionQuestion& question, QWidget* parent) : FieldPage(parent), question_(question) {
  AddFormat();
  AddHeading("Where to");
  AddFolder();
  Close();
}

void OutputPage::AddFormat() {
  AddHeading("Files");
  format_ = new ValueList(OutputFormats(), {}, Content());
  AddField("format", "&Format:", format_);
  quality_ = new NumberField({.smallest = 0, .largest = 100}, Content());
  qualityField_ = AddField("quality", "&Quality:", quality_);
  resolution_ = new NumberField({.smallest = 25, .largest = 999}, Content());
  resolution_->setSuffix(QStringLiteral(" dpi"));
  resolutionField_ = AddField("resolution", "&Resolution:", resolution_);
  profile_ = new QLabel(Content());
  profile_->setTextFormat(Qt::PlainText);
  AddField("profile", "Color profile:", profile_);
  connect(format_, &QComboBox::currentIndexChanged, this, &OutputPage::Update);
  for (auto* field : {quality_, resolution_}) connect(field, &QDoubleSpinBox::valueChanged, this, &OutputPage::Update);
}

void OutputPage::AddFolder() {
  beside_ = new QRadioButton(QStringLiteral("In the folder CONVERTED &beside the image"), Content());
  elsewhere_ = new QRadioButton(QStringLiteral("I&n this folder:"), Content());
  AddButton("beside", beside_);
  AddButton("elsewhere", elsewhere_);
  folder_ = new platform::ui::ByteLine;
  browse_ = new QPushButton(QStringLiteral("Bro&wse..."));
  browse_->setAutoDefault(false);
  auto* row = Row({folder_, browse_});
  row->setParent(Content());
  row->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  folderField_ = AddField("folder", "", row, folder_);
  folder_->setAccessibleName(QStringLiteral("Folder"));
  folder_->setMinimumWidth(fontMetrics().averageCharWidth() * kFolderWidth);
  letter_ = new QCheckBox(QStringLiteral("Add a &letter to the names: L for linear, C for combined"), Content());
  AddButton("letter", letter_);
  example_ = new QLabel(Content());
  example_->setTextFormat(Qt::PlainText);
  AddField("example", "Gives:", example_);
  for (auto* button : {static_cast<QAbstractButton*>(beside_), static_cast<QAbstractButton*>(letter_)}) {
    connect(button, &QAbstractButton::toggled, this, &OutputPage::Update);
  }
  connect(folder_, &QLineEdit::textChanged, this, &OutputPage::Update);
  connect(browse_, &QPushButton::clicked, this, &OutputPage::Browse);
}

void OutputPage::Browse() {
  if (!question_.chooseDirectory) return;
  ConversionChoice now;
  Take(now);
  const auto start = ConversionDirectory(question_.path, {false, now.directory.directory});
  if (const auto chosen = question_.chooseDirectory(*window(), start)) folder_->SetBytes(*chosen);
}

void OutputPage::Show(const ConversionChoice& choice) {
  format_->Show(static_cast<int>(choice.format));
  quality_->Show(choice.quality);
  resolution_->Show(choice.resolution);
  (choice.directory.besideSource ? beside_ : elsewhere_)->setChecked(true);
  folder_->SetBytes(choice.directory.directory);
  letter_->setChecked(choice.appendMethodLetter);
  Update();
}

void OutputPage::Take(ConversionChoice& choice) const {
  choice.format = static_cast<OutputFormat>(format_->Value());
  choice.quality = quality_->Whole();
  choice.resolution = resolution_->Whole();
  choice.directory = {beside_->isChecked(), folder_->Bytes()};
  choice.appendMethodLetter = letter_->isChecked();
}

std::optional<Complaint> OutputPage::FirstComplaint() {
  for (auto* field : {quality_, resolution_}) {
    if (field->isEnabledTo(window()) && !field->Complaint().empty()) {
      return Complaint{field->Complaint(), field, [field] { field->Restore(); }};
    }
  }
  return std::nullopt;
}

void OutputPage::Update() {
  qualityField_->SetReason(HasQuality(format_->Value()) ? "" : messages::kNoQuality);
  qualityField_->SetRemark(quality_->Complaint());
  resolutionField_->SetRemark(resolution_->Complaint());
  folderField_->SetReason(elsewhere_->isChecked() ? "" : messages::kOtherFolder);
  Q_EMIT changed();
}

void OutputPage::ShowResult(const ConversionChoice& choice) {
  const auto& settings = choice.settings;
  const bool resized = !question_.batch && settings.postProcess != 0 && settings.resize != 0 &&
                       settings.resizeUnits != ResizeUnits::Pixels;
  resolutionField_->SetReason(resized ? messages::kResizeResolution : "");
  profile_->setText(ToQString(ProfileText(choice.profiles, settings.method, choice.format)));
  BatchConversion batch;
  batch.outputDirectory = ConversionDirectory(question_.path, choice.directory);
  batch.options.format = choice.format;
  batch.appendMethodLetter = choice.appendMethodLetter;
  const auto name = platform::ui::ToLabel(ConvertedPath(question_.path, settings.method, batch));
  example_->setText(
      fontMetrics().elidedText(name, Qt::ElideMiddle, fontMetrics().averageCharWidth() * kLongestExample));
  example_->setToolTip(platform::ui::PlainToolTip(name));
}

}  // namespace ml::rawconvert::ui
