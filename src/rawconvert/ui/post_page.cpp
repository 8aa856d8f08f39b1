#include "rawconvert/ui/post_page.h"

#include <QSignalBlocker>
#include <algorithm>
#include <array>

#include "imagefiles/size_fitting.h"
#include "rawconvert/resize_box.h"
#include "rawconvert/ui/messages.h"

namespace ml::rawconvert::ui {
namespace {

constexpr std::array kLevelStyles = {ValueRow{0, "None"}, ValueRow{1, "Auto"}, ValueRow{2, "Manual"}};
constexpr std::array kUnits = {ValueRow{0, "pixels"}, ValueRow{1, "inches"}, ValueRow{2, "cm"}};
constexpr std::array kSharpenMethods = {ValueRow{0, "Unsharp mask"}, ValueRow{1, "HQ style"}};

constexpr int kLargestBlack = 251, kSmallestWhite = 4, kLevelsApart = 4, kLargestLevel = 255;
constexpr NumberRange kBlack{.smallest = 0, .largest = kLargestBlack};
constexpr NumberRange kWhite{.smallest = kSmallestWhite, .largest = kLargestLevel};
constexpr NumberRange kMid{
    .smallest = 0.01, .largest = 9.99, .decimals = 2, .step = 0.05, .refusal = messages::kMidPoint};
constexpr NumberRange kPercentOfBlack{
    .smallest = 0, .largest = 100, .decimals = 2, .step = 0.1, .refusal = messages::kBlackPercent};
constexpr NumberRange kPercentOfWhite{
    .smallest = 0, .largest = 100, .decimals = 2, .step = 0.1, .refusal = messages::kWhitePercent};
constexpr NumberRange kSaturation{.smallest = 0, .largest = 400};
constexpr NumberRange kGamma{.smallest = 0.1, .largest = 9.99, .decimals = 2, .step = 0.1};
constexpr NumberRange kResolution{.smallest = 1, .largest = 9999};
constexpr NumberRange kHqAmount{.smallest = 0, .largest = 500};
constexpr NumberRange kRadius{.smallest = 0, .largest = 100, .decimals = 2, .step = 0.1};
constexpr NumberRange kAmount{.smallest = 0, .largest = 100, .decimals = 2, .step = 0.1};
constexpr NumberRange kThreshold{.smallest = 0, .largest = 100, .decimals = 1};

}  // namespace

PostPage::PostPage(const ConversionQuestion& question, QWidget* parent) : FieldPage(parent), question_(question) {
  post_ = AddCheck("postProcess", "Post-process &images");
  AddLevels();
  AddColours();
  AddResize();
  AddSharpen();
  Close();
}

void PostPage::AddNumbers(const std::vector<NumberRow>& rows, std::string (PostPage::*whyNot)() const) {
  std::vector<Part> parts;
  for (const auto& row : rows) {
    auto* box = new NumberField(row.range, Content());
    this->*row.box = box;
    parts.push_back({row.name, row.label, box});
    connect(box, &QDoubleSpinBox::valueChanged, this, &PostPage::Update);
  }
  const auto fields = AddParts(parts);
  for (std::size_t i = 0; i < rows.size(); ++i) numbers_.push_back({this->*rows[i].box, fields[i], whyNot});
}

QCheckBox* PostPage::AddCheck(const char* name, const char* text) {
  auto* check = new QCheckBox(QString::fromLatin1(text), Content());
  AddButton(name, check);
  connect(check, &QCheckBox::toggled, this, &PostPage::Update);
  return check;
}

void PostPage::AddLevels() {
  AddHeading("Levels");
  levels_ = new ValueList(kLevelStyles, {}, Content());
  levelsField_ = AddField("levels", "&Levels:", levels_);
  connect(levels_, &QComboBox::currentIndexChanged, this, &PostPage::Update);
  AddNumbers({{"blackPercent", "Black point perce&ntage:", kPercentOfBlack, &PostPage::blackPercent_},
              {"whitePercent", "White poin&t percentage:", kPercentOfWhite, &PostPage::whitePercent_}},
             &PostPage::ForAutoLevels);
  for (auto* box : {blackPercent_, whitePercent_}) {
    connect(box, &QDoubleSpinBox::valueChanged, this, [this, box] { editedPercent_ = box; });
  }
  AddNumbers({{"blackPoint", "&Black point:", kBlack, &PostPage::black_},
              {"midPoint", "&Mid point:", kMid, &PostPage::mid_},
              {"whitePoint", "&White point:", kWhite, &PostPage::white_}},
             &PostPage::ForManualLevels);
  for (auto* box : {black_, white_}) {
    connect(box, &QAbstractSpinBox::editingFinished, this, [this, box] { KeepLevelsApart(box); });
  }
}

void PostPage::AddColours() {
  AddHeading("Color");
  saturate_ = AddCheck("adjustSaturation", "Adjust sat&uration");
  AddNumbers({{"saturationPercent", "Saturation:", kSaturation, &PostPage::saturation_}}, &PostPage::ForSaturation);
  saturation_->setSuffix(QStringLiteral(" %"));
  adjustGamma_ = AddCheck("adjustGamma", "Adjust &gamma");
  AddNumbers({{"gamma", "Gamma:", kGamma, &PostPage::gamma_}}, &PostPage::ForGamma);
}

void PostPage::AddResize() {
  AddHeading("Size");
  resize_ = AddCheck("resize", "&Resize to fit into");
  const NumberRange edge{.smallest = 1, .largest = kMaxBoxPixels};
  AddNumbers({{"boxWidth", "Widt&h:", edge, &PostPage::width_}, {"boxHeight", "Height:", edge, &PostPage::height_}},
             &PostPage::ForResize);
  units_ = new ValueList(kUnits, {}, Content());
  unitsField_ = AddField("units", "Units:", units_);
  AddNumbers({{"resizeDpi", "Resolution:", kResolution, &PostPage::dpi_}}, &PostPage::ForResolution);
  dpi_->setSuffix(QStringLiteral(" dpi"));
  result_ = new QLabel(Content());
  resultField_ = AddField("result", "Gives:", result_);
  connect(units_, &QComboBox::currentIndexChanged, this, &PostPage::UnitsChanged);
  for (auto* box : {width_, height_, dpi_}) connect(box, &QDoubleSpinBox::valueChanged, this, &PostPage::TakeBox);
}

void PostPage::AddSharpen() {
  AddHeading("Sharpness");
  sharpen_ = AddCheck("sharpen", "Sharp&en");
  sharpenMethod_ = new ValueList(kSharpenMethods, {}, Content());
  sharpenMethodField_ = AddField("sharpenMethod", "Method:", sharpenMethod_);
  connect(sharpenMethod_, &QComboBox::currentIndexChanged, this, &PostPage::Update);
  AddNumbers({{"usmRadius", "Radius:", kRadius, &PostPage::usmRadius_},
              {"usmAmount", "Amount:", kAmount, &PostPage::usmAmount_},
              {"usmThreshold", "Threshold:", kThreshold, &PostPage::usmThreshold_}},
             &PostPage::ForUnsharpMask);
  usmThreshold_->setSuffix(QStringLiteral(" %"));
  AddNumbers({{"hqAmount", "Percentage (default=75):", kHqAmount, &PostPage::hqAmount_}}, &PostPage::ForHqSharpening);
}

std::string PostPage::IfOn(const QCheckBox* step, const char* unless) const {
  if (!post_->isChecked()) return messages::kOnlyPostProcessed;
  return step == nullptr || step->isChecked() ? unless : messages::kNotChosen;
}
std::string PostPage::ForManualLevels() const {
  return IfOn(nullptr, levels_->Value() == static_cast<int>(LevelsStyle::Manual) ? "" : messages::kOtherLevels);
}
std::string PostPage::ForAutoLevels() const {
  return IfOn(nullptr, levels_->Value() == static_cast<int>(LevelsStyle::Auto) ? "" : messages::kOtherLevels);
}
std::string PostPage::ForSaturation() const { return IfOn(saturate_); }
std::string PostPage::ForGamma() const { return IfOn(adjustGamma_); }
std::string PostPage::ForResize() const { return IfOn(resize_); }
std::string PostPage::ForResolution() const {
  return IfOn(resize_, units_->Value() == 0 ? messages::kOnlyLengths : "");
}
std::string PostPage::ForSharpening() const { return IfOn(sharpen_); }
std::string PostPage::ForUnsharpMask() const {
  return IfOn(sharpen_, sharpenMethod_->Value() == 0 ? "" : messages::kOtherSharpening);
}
std::string PostPage::ForHqSharpening() const {
  return IfOn(sharpen_, sharpenMethod_->Value() != 0 ? "" : messages::kOtherSharpening);
}

void PostPage::Show(const RawConversionSettings& settings) {
  post_->setChecked(settings.postProcess != 0);
  levels_->Show(static_cast<int>(settings.levelsStyle));
  black_->Show(std::clamp(settings.blackPoint, 0, kLargestBlack));
  mid_->Show(settings.midPoint);
  white_->Show(std::clamp(settings.whitePoint, kSmallestWhite, kLargestLevel));
  blackPercent_->Show(settings.blackPointPercent);
  whitePercent_->Show(settings.whitePointPercent);
  saturate_->setChecked(settings.adjustSaturation != 0);
  saturation_->Show(settings.saturation);
  adjustGamma_->setChecked(settings.adjustGamma != 0);
  gamma_->Show(settings.gamma);
  resize_->setChecked(settings.resize != 0);
  units_->Show(static_cast<int>(settings.resizeUnits));
  dpi_->Show(settings.resizeDpi);
  boxWidth_ = settings.resizeWidth;
  boxHeight_ = settings.resizeHeight;
  UnitsChanged();
  sharpen_->setChecked(settings.sharpen != 0);
  sharpenMethod_->Show(static_cast<int>(settings.sharpenMethod));
  usmRadius_->Show(settings.usmRadius);
  usmAmount_->Show(settings.usmAmount);
  usmThreshold_->Show(settings.usmThreshold);
  hqAmount_->Show(settings.hqSharpenAmount);
  Update();
}

void PostPage::Take(RawConversionSettings& settings) const {
  const auto flag = [](const QCheckBox* box) { return box->isChecked() ? 1 : 0; };
  settings.postProcess = flag(post_);
  settings.levelsStyle = static_cast<LevelsStyle>(levels_->Value());
  settings.blackPoint = black_->Whole();
  settings.midPoint = mid_->value();
  settings.whitePoint = white_->Whole();
  settings.blackPointPercent = blackPercent_->value();
  settings.whitePointPercent = whitePercent_->value();
  settings.adjustSaturation = flag(saturate_);
  settings.saturation = saturation_->Whole();
  settings.adjustGamma = flag(adjustGamma_);
  settings.gamma = gamma_->value();
  settings.resize = flag(resize_);
  settings.resizeUnits = static_cast<ResizeUnits>(units_->Value());
  settings.resizeDpi = dpi_->Whole();
  settings.resizeWidth = boxWidth_;
  settings.resizeHeight = boxHeight_;
  settings.sharpen = flag(sharpen_);
  settings.sharpenMethod = static_cast<SharpenMethod>(sharpenMethod_->Value());
  settings.usmRadius = usmRadius_->value();
  settings.usmAmount = usmAmount_->value();
  settings.usmThreshold = usmThreshold_->value();
  settings.hqSharpenAmount = hqAmount_->Whole();
}

/// The one that was moved stays, the other one gives way.
void PostPage::KeepLevelsApart(const NumberField* moved) {
  int black = std::clamp(black_->Whole(), 0, kLargestBlack);
  int white = std::clamp(white_->Whole(), kSmallestWhite, kLargestLevel);
  if (moved == black_) white = std::max(white, black + kLevelsApart);
  black = std::min(black, white - kLevelsApart);
  black_->Show(black);
  white_->Show(white);
  Update();
}

void PostPage::UnitsChanged() {
  const auto units = static_cast<ResizeUnits>(units_->Value());
  const double smallest = units == ResizeUnits::Pixels ? 1 : 0;
  for (auto* box : {width_, height_}) {
    box->SetLimits({.smallest = smallest,
                    .largest = MaxBoxEdge(units),
                    .decimals = BoxDecimals(units),
                    .step = units == ResizeUnits::Pixels ? 1 : 0.5});
  }
  const int dpi = std::max(dpi_->Whole(), 1);
  width_->Show(BoxEdgeIn(units, boxWidth_, dpi));
  height_->Show(BoxEdgeIn(units, boxHeight_, dpi));
  Update();
}

void PostPage::TakeBox() {
  const auto units = static_cast<ResizeUnits>(units_->Value());
  const int dpi = std::max(dpi_->Whole(), 1);
  boxWidth_ = BoxPixelsOf(units, width_->value(), dpi);
  boxHeight_ = BoxPixelsOf(units, height_->value(), dpi);
  ShowBox();
}

void PostPage::ShowBox() {
  const auto& exif = question_.exif;
  if (exif.imageWidth < 1 || exif.imageHeight < 1) return;
  const auto fit = imagefiles::FillBox({exif.imageWidth, exif.imageHeight}, {boxWidth_, boxHeight_});
  result_->setText(QStringLiteral("(%1 x %2 pixels)").arg(fit.width).arg(fit.height));
}

std::string PostPage::SumComplaint() const {
  if (!ForAutoLevels().empty() || blackPercent_->value() + whitePercent_->value() <= 100) return {};
  return messages::kPercentSum;
}

std::optional<Complaint> PostPage::FirstComplaint() {
  for (const auto& [box, field, whyNot] : numbers_) {
    if (!(this->*whyNot)().empty() || box->Complaint().empty()) continue;
    return Complaint{box->Complaint(), box, [box = box] { box->Restore(); }};
  }
  if (SumComplaint().empty()) return std::nullopt;
  auto* kept = editedPercent_ == whitePercent_ ? whitePercent_ : blackPercent_;
  auto* other = kept == blackPercent_ ? whitePercent_ : blackPercent_;
  return Complaint{SumComplaint(), kept, [kept, other] { other->setValue(100 - kept->value()); }};
}

void PostPage::Update() {
  for (auto& [box, field, whyNot] : numbers_) {
    field.SetReason((this->*whyNot)());
    auto complaint = box->Complaint();
    if (complaint.empty() && box == whitePercent_) complaint = SumComplaint();
    field.SetRemark(complaint);
  }
  const auto all = IfOn(nullptr);
  levelsField_->SetReason(all);
  unitsField_->SetReason(ForResize());
  resultField_->SetReason(ForResize());
  sharpenMethodField_->SetReason(ForSharpening());
  for (auto* step : {saturate_, adjustGamma_, resize_, sharpen_}) step->setEnabled(all.empty());
  ShowBox();
  Q_EMIT changed();
}

}  // namespace ml::rawconvert::ui
