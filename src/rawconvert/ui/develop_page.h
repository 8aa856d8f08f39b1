#pragma once

#include <QCheckBox>
#include <vector>

#include "rawconvert/capabilities.h"
#include "rawconvert/ui/conversion_question.h"
#include "rawconvert/ui/field_page.h"
#include "rawconvert/ui/number_field.h"
#include "rawconvert/ui/value_list.h"

namespace ml::rawconvert::ui {

struct ListRow;

/// How the raw data are developed: what the camera of the question knows, and no more.
class DevelopPage final : public FieldPage {
  Q_OBJECT

 public:
  explicit DevelopPage(const ConversionQuestion& question, QWidget* parent = nullptr);

  void Show(const ConversionChoice& choice);
  /// Fields that the camera does not know stay as they are in `choice`.
  void Take(ConversionChoice& choice) const;
  std::optional<Complaint> FirstComplaint();

 Q_SIGNALS:
  void changed();
  /// Another colour space or matrix was chosen, labelled so.
  void spaceChanged(const std::string& label);

 private:
  struct ListField {
    const ListRow* row;
    ValueList* list;
    PageField field;
  };

  void AddLists(std::span<const ListRow> rows);
  void AddColourTemperature();
  void AddExposure();
  void AddChecks();
  void Update();
  const ListField* FindList(std::string_view name) const;
  int ValueIn(std::string_view name, int otherwise) const;
  int& KelvinOf(RawConversionSettings& settings) const;

  const ConversionQuestion& question_;
  const Capabilities capabilities_;
  std::vector<ListField> lists_;
  NumberField* kelvin_ = nullptr;
  NumberField* exposure_ = nullptr;
  std::optional<PageField> kelvinField_, exposureField_;
  QCheckBox* falseColour_ = nullptr;
  QCheckBox* falseResolution_ = nullptr;
  QCheckBox* sameBalance_ = nullptr;
};

}  // namespace ml::rawconvert::ui
