#pragma once

#include <QCheckBox>
#include <QLabel>

#include "rawconvert/ui/conversion_question.h"
#include "rawconvert/ui/field_page.h"
#include "rawconvert/ui/number_field.h"
#include "rawconvert/ui/value_list.h"

namespace ml::rawconvert::ui {

/// What is done to the developed picture: levels, saturation, gamma, size, sharpening.
class PostPage final : public FieldPage {
  Q_OBJECT

 public:
  explicit PostPage(const ConversionQuestion& question, QWidget* parent = nullptr);

  void Show(const RawConversionSettings& settings);
  void Take(RawConversionSettings& settings) const;
  std::optional<Complaint> FirstComplaint();

 Q_SIGNALS:
  void changed();

 private:
  /// A number that is one of the settings, and when it counts.
  struct Number {
    NumberField* box;
    PageField field;
    std::string (PostPage::*whyNot)() const;
  };

  struct NumberRow {
    const char* name;
    const char* label;
    NumberRange range;
    NumberField* PostPage::*box;
  };

  /// In one row.
  void AddNumbers(const std::vector<NumberRow>& rows, std::string (PostPage::*whyNot)() const);
  QCheckBox* AddCheck(const char* name, const char* text);
  void AddLevels();
  void AddColours();
  void AddResize();
  void AddSharpen();

  std::string ForManualLevels() const;
  std::string ForAutoLevels() const;
  std::string ForSaturation() const;
  std::string ForGamma() const;
  std::string ForResize() const;
  std::string ForResolution() const;
  std::string ForUnsharpMask() const;
  std::string ForHqSharpening() const;
  std::string ForSharpening() const;
  /// `unless` when all is on.
  std::string IfOn(const QCheckBox* step, const char* unless = "") const;

  void KeepLevelsApart(const NumberField* moved);
  void UnitsChanged();
  void ShowBox();
  void TakeBox();
  std::string SumComplaint() const;
  void Update();

  const ConversionQuestion& question_;
  std::vector<Number> numbers_;
  QCheckBox *post_, *saturate_, *adjustGamma_, *resize_, *sharpen_;
  ValueList *levels_, *units_, *sharpenMethod_;
  NumberField *black_, *mid_, *white_, *blackPercent_, *whitePercent_, *saturation_, *gamma_;
  NumberField *width_, *height_, *dpi_, *hqAmount_, *usmRadius_, *usmAmount_, *usmThreshold_;
  std::optional<PageField> levelsField_, unitsField_, resultField_, sharpenMethodField_;
  QLabel* result_;
  NumberField* editedPercent_ = nullptr;  ///< the one that stays when both are too much
  int boxWidth_ = 1, boxHeight_ = 1;      ///< pixels, whatever the unit
};

}  // namespace ml::rawconvert::ui
