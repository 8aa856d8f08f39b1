#include "rawconvert/ui/develop_page.h"

#include <array>
#include <variant>

#include "platform/ui/qt_text.h"
#include "rawconvert/as_shot_labels.h"
#include "rawconvert/normalise_settings.h"
#include "rawconvert/ui/messages.h"

namespace ml::rawconvert::ui {

/// A setting that is chosen from a list.
struct ListRow {
  const char* name;
  const char* label;
  std::span<const ValueRow> (*values)(const Capabilities&);
  std::string (*asShot)(const metadata::ExifData&);  ///< label of the first value; null for the plain one
  std::variant<int RawDialogValues::*, int RawConversionSettings::*, Method RawConversionSettings::*> slot;
};

namespace {

using C = const Capabilities&;
using Rows = std::span<const ValueRow>;

constexpr int kColourTemperatureBalance = 9;
constexpr double kMostExposure = 2.0;  ///< in stops, either way

/// Only "Normal" where there is nothing else; a camera of 8 bits is warned about when the dialog is accepted.
Rows MethodsOf(C camera) {
  if (camera.combined || camera.kind == CapabilityKind::EightBit) return Methods();
  return Methods().first(camera.linear ? 2 : 1);
}

constexpr std::array kShotRows = {ListRow{"whiteBalance", "&White balance:", [](C c) { return c.whiteBalance; },
                                          AsShotWhiteBalance, &RawDialogValues::whiteBalance}};
constexpr std::array kLookRows = {
    ListRow{"contrast", "Co&ntrast:", [](C c) { return c.contrast; }, AsShotContrast, &RawDialogValues::contrast},
    ListRow{"saturation", "Sat&uration:", [](C c) { return c.saturation; }, AsShotSaturation,
            &RawDialogValues::saturation},
    ListRow{"sharpness", "S&harpness:", [](C c) { return c.sharpness; }, AsShotSharpness, &RawDialogValues::sharpness},
    ListRow{"tone", "Color &tone:", [](C c) { return c.tone; }, AsShotTone, &RawDialogValues::tone},
    ListRow{"photoEffect", "Photo &effect:", [](C c) { return c.photoEffect ? PhotoEffects() : Rows(); },
            AsShotPhotoEffect, &RawDialogValues::photoEffect},
    ListRow{"colourMatrix", "Color Matri&x:", [](C c) { return c.colourMatrix ? ColourMatrices() : Rows(); },
            AsShotColourMatrix, &RawConversionSettings::colourMatrix},
    ListRow{"sharpnessLevel", "Sharpening &level:", [](C c) { return c.colourMatrix ? SharpeningLevels() : Rows(); },
            AsShotSharpening, &RawConversionSettings::sharpnessLevel},
    ListRow{"sharpnessObject", "Sharpening o&bject:", [](C c) { return c.colourMatrix ? SharpeningObjects() : Rows(); },
            nullptr, &RawConversionSettings::sharpnessObject},
    ListRow{"colourSpace", "Color space:", [](C c) { return c.colourSpace ? ColourSpaces() : Rows(); },
            AsShotColourSpace, &RawConversionSettings::colourSpace}};
constexpr std::array kMethodRows = {
    ListRow{"method", "Con&version method:", MethodsOf, nullptr, &RawConversionSettings::method},
    ListRow{"noise", "Smart Noise &Reduction:", [](C) { return NoiseBlendings(); }, nullptr,
            &RawConversionSettings::noiseBlending}};

/// Shown also where the camera has nothing to choose from.
bool IsLevel(const ListRow& row) {
  const std::string_view name = row.name;
  return name == "contrast" || name == "saturation" || name == "sharpness";
}

int Get(const ListRow& row, const ConversionChoice& choice) {
  if (const auto* value = std::get_if<0>(&row.slot)) return choice.values.**value;
  if (const auto* setting = std::get_if<1>(&row.slot)) return choice.settings.**setting;
  return static_cast<int>(choice.settings.*std::get<2>(row.slot));
}

void Put(const ListRow& row, ConversionChoice& choice, int number) {
  if (const auto* value = std::get_if<0>(&row.slot)) {
    choice.values.** value = number;
  } else if (const auto* setting = std::get_if<1>(&row.slot)) {
    choice.settings.** setting = number;
  } else {
    choice.settings.*std::get<2>(row.slot) = static_cast<Method>(number);
  }
}

}  // namespace

DevelopPage::DevelopPage(const ConversionQuestion& question, QWidget* parent)
    : FieldPage(parent), question_(question), capabilities_(CapabilitiesOf(question.family)) {
  AddLists(kShotRows);
  if (capabilities_.colourTemperature) AddColourTemperature();
  if (capabilities_.exposureCompensation) AddExposure();
  AddLists(kLookRows);
  AddLists(kMethodRows);
  AddChecks();
  Close();
}

void DevelopPage::AddLists(std::span<const ListRow> rows) {
  for (const auto& row : rows) {
    const auto values = row.values(capabilities_);
    if (values.empty() && !(IsLevel(row) && capabilities_.contrastShown)) continue;
    auto* list = new ValueList(values, row.asShot == nullptr ? std::string() : row.asShot(question_.exif), Content());
    lists_.push_back({&row, list, AddField(row.name, row.label, list)});
    connect(list, &QComboBox::currentIndexChanged, this, &DevelopPage::Update);
    const bool space = row.slot == decltype(row.slot)(&RawConversionSettings::colourSpace) ||
                       row.slot == decltype(row.slot)(&RawConversionSettings::colourMatrix);
    if (!space) continue;
    connect(list, &QComboBox::currentTextChanged, this,
            [this](const QString& text) { Q_EMIT spaceChanged(text.toStdString()); });
  }
}

void DevelopPage::AddColourTemperature() {
  kelvin_ = new NumberField({.smallest = 2800, .largest = 10000, .step = 100}, Content());
  kelvinField_ = AddField("colourTemperature", "Color te&mperature:", kelvin_);
  connect(kelvin_, &QAbstractSpinBox::editingFinished, this,
          [this] { kelvin_->Show(NormaliseColourTemperature(kelvin_->Whole())); });
  connect(kelvin_, &QDoubleSpinBox::valueChanged, this, &DevelopPage::Update);
}

void DevelopPage::AddExposure() {
  exposure_ =
      new NumberField({.smallest = -kMostExposure, .largest = kMostExposure, .decimals = 1, .step = 0.1}, Content());
  exposureField_ = AddField("exposure", "E&xposure comp:", exposure_);
  connect(exposure_, &QDoubleSpinBox::valueChanged, this, &DevelopPage::Update);
}

void DevelopPage::AddChecks() {
  const auto check = [&](const char* name, const char* text) {
    auto* box = new QCheckBox(QString::fromLatin1(text), Content());
    AddButton(name, box);
    return box;
  };
  if (!question_.family.isNef) falseColour_ = check("falseColour", "&False color filter");
  if (capabilities_.falseResolutionFilter) falseResolution_ = check("falseResolution", "False resolut&ion filter");
  if (!question_.batch) sameBalance_ = check("sameBalance", "Use this white balance for all ima&ges");
}

int& DevelopPage::KelvinOf(RawConversionSettings& settings) const {
  return capabilities_.kind == CapabilityKind::Eos1D ? settings.colourTemperature1D : settings.colourTemperature10D;
}

void DevelopPage::Show(const ConversionChoice& choice) {
  for (const auto& [row, list, field] : lists_) list->Show(Get(*row, choice));
  auto settings = choice.settings;
  if (kelvin_ != nullptr) kelvin_->Show(KelvinOf(settings));
  if (exposure_ != nullptr) exposure_->Show(choice.values.exposureCompensation / 10.0);
  if (falseColour_ != nullptr) falseColour_->setChecked(settings.falseColourFilter != 0);
  if (falseResolution_ != nullptr) falseResolution_->setChecked(settings.falseResolutionFilter != 0);
  if (sameBalance_ != nullptr) sameBalance_->setChecked(settings.sameWhiteBalance != 0);
  Update();
}

void DevelopPage::Take(ConversionChoice& choice) const {
  for (const auto& [row, list, field] : lists_) {
    if (list->count() > 0) Put(*row, choice, list->Value());
  }
  auto& settings = choice.settings;
  if (kelvin_ != nullptr) KelvinOf(settings) = NormaliseColourTemperature(kelvin_->Whole());
  if (exposure_ != nullptr) choice.values.exposureCompensation = qRound(exposure_->value() * 10);
  const auto take = [](const QCheckBox* box, int& flag) {
    if (box != nullptr && box->isChecked() != (flag != 0)) flag = box->isChecked() ? 1 : 0;
  };
  take(falseColour_, settings.falseColourFilter);
  take(falseResolution_, settings.falseResolutionFilter);
  take(sameBalance_, settings.sameWhiteBalance);
}

std::optional<Complaint> DevelopPage::FirstComplaint() {
  if (exposure_ == nullptr || exposure_->Complaint().empty()) return std::nullopt;
  return Complaint{exposure_->Complaint(), exposure_, [this] { exposure_->Restore(); }};
}

const DevelopPage::ListField* DevelopPage::FindList(std::string_view name) const {
  for (const auto& field : lists_) {
    if (field.row->name == name) return &field;
  }
  return nullptr;
}

int DevelopPage::ValueIn(std::string_view name, int otherwise) const {
  const auto* field = FindList(name);
  return field == nullptr ? otherwise : field->list->Value();
}

void DevelopPage::Update() {
  const auto method = static_cast<Method>(ValueIn("method", 0));
  const auto enabled = EnabledBy(question_.family, method, ValueIn("photoEffect", 0), question_.exif);
  const auto off = [&](std::string_view name, bool on, const char* byMethod) {
    const auto* found = FindList(name);
    if (found == nullptr) return;
    auto field = found->field;
    const bool linearOrCombined = method == Method::Linear || (name == "sharpness" && method != Method::Normal);
    field.SetReason(on                                               ? ""
                    : found->list->count() == 0                      ? messages::kNotThisCamera
                    : capabilities_.photoEffect && !linearOrCombined ? messages::kByPhotoEffect
                                                                     : byMethod);
  };
  off("whiteBalance", enabled.whiteBalance, messages::kByPhotoEffect);
  off("contrast", enabled.contrast, messages::kNotWithLinear);
  off("saturation", enabled.saturation, messages::kNotWithLinear);
  off("sharpness", enabled.sharpness, messages::kOnlyNormal);
  const bool byTemperature = ValueIn("whiteBalance", kAsShot) == kColourTemperatureBalance;
  if (kelvinField_) kelvinField_->SetReason(byTemperature ? "" : messages::kOnlyColourTemperature);
  if (exposureField_) exposureField_->SetRemark(exposure_->Complaint());
  Q_EMIT changed();
}

}  // namespace ml::rawconvert::ui
