#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "platform/ui/byte_line.h"
#include "rawconvert/ui/conversion_question.h"
#include "rawconvert/ui/field_page.h"
#include "rawconvert/ui/number_field.h"
#include "rawconvert/ui/value_list.h"

namespace ml::rawconvert::ui {

/// As what, where and under which name the images are written.
class OutputPage final : public FieldPage {
  Q_OBJECT

 public:
  explicit OutputPage(const ConversionQuestion& question, QWidget* parent = nullptr);

  void Show(const ConversionChoice& choice);
  void Take(ConversionChoice& choice) const;
  std::optional<Complaint> FirstComplaint();
  /// What follows from `choice`, which is that of all pages: the profile, the name of the first image, and whether the
  /// resolution counts.
  void ShowResult(const ConversionChoice& choice);

 Q_SIGNALS:
  void changed();

 private:
  void AddFormat();
  void AddFolder();
  void Browse();
  void Update();

  const ConversionQuestion& question_;
  ValueList* format_;
  NumberField* quality_;
  NumberField* resolution_;
  QLabel* profile_;
  QRadioButton* beside_;
  QRadioButton* elsewhere_;
  platform::ui::ByteLine* folder_;
  QPushButton* browse_;
  QCheckBox* letter_;
  QLabel* example_;
  std::optional<PageField> qualityField_, resolutionField_, folderField_;
};

}  // namespace ml::rawconvert::ui
