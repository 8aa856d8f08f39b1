#pragma once

#include <QScrollArea>
#include <vector>

#include "app/preferences/preference_row.h"
#include "app/preferences/ui/field_widgets.h"
#include "settings/settings.h"

class QGridLayout;

namespace ml::app {

class PreferenceEditor;
class SchemeExample;

/// The fields of one page, one below the other.
class PreferencePageView final : public QScrollArea {
  Q_OBJECT

 public:
  /// `page` outlives the view.
  PreferencePageView(const PreferencePage& page, const FieldHelp& help, QWidget* parent);

  const PreferencePage& Page() const { return page_; }
  /// Parallel to the rows of the page.
  const std::vector<PreferenceEditor*>& Editors() const { return editors_; }

  /// Shows the values of all fields, with what is to be told of them.
  void ShowValues(const settings::Settings& settings);
  /// Turns fields on and off and redraws examples; the values in the fields stay.
  void Refresh(const settings::Settings& settings);
  void ScrollTo(const PreferenceEditor& editor);

 private:
  void AddHeading(QGridLayout& grid, QWidget* content, std::string_view heading);

  const PreferencePage& page_;
  std::vector<PreferenceEditor*> editors_;
  std::vector<SchemeExample*> examples_;
};

}  // namespace ml::app
