#pragma once

#include <QObject>
#include <string>

#include "app/preferences/preference_remarks.h"
#include "app/preferences/preference_row.h"
#include "app/preferences/ui/field_widgets.h"

class QGridLayout;
class QLabel;

namespace ml::app {

/// One row of a page: label, field, note, and what is wrong with the value.
class PreferenceEditor final : public QObject {
  Q_OBJECT

 public:
  /// Adds its widgets below what `grid` holds. `row` outlives the editor.
  PreferenceEditor(const PreferenceRow& row, const FieldHelp& help, QGridLayout& grid, QWidget* page);

  const PreferenceRow& Row() const { return row_; }
  /// The widget that takes the keyboard.
  QWidget* Field() const { return field_.focus; }
  /// What names the setting on the screen.
  QWidget* Label() const;

  void ShowValue(const std::string& value);
  void ShowRemark(const Remark& remark);
  /// Off with the reason as tool tip; on for an empty reason.
  void ShowReason(std::string_view reason);
  /// Marks it as an answer of the search.
  void SetFound(bool found);

 Q_SIGNALS:
  void edited(const std::string& value);

 private:
  void AddRemark(QGridLayout& grid, QWidget* page);
  void ShowOrHideRemark();
  void SetTip(const QString& tip);

  const PreferenceRow& row_;
  FieldWidgets field_;
  QLabel* label_ = nullptr;  ///< null for a check box, which brings its own
  QWidget* remark_ = nullptr;
  QLabel* remarkText_ = nullptr;
  Remark told_;
  bool counts_ = true;
};

}  // namespace ml::app
