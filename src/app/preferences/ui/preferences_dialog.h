#pragma once

#include <QDialog>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/preferences/preference_search.h"
#include "app/preferences/ui/field_widgets.h"
#include "settings/settings.h"

class QGridLayout;
class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace ml::app {

class PreferenceEditor;
class PreferencePageView;
class SearchLine;

/// The Preferences. Works on a copy of the settings; `applied` hands the copy out with Apply, and with OK if
/// anything changed.
class CPreferencesDialog final : public QDialog {
  Q_OBJECT

 public:
  CPreferencesDialog(const settings::Settings& settings, const FieldHelp& help, QWidget* parent);

  int Page() const;
  /// A number outside is ignored.
  void ShowPage(int page);

  void accept() override;

 Q_SIGNALS:
  void applied(const settings::Settings& settings);

 private:
  void MakePages(const FieldHelp& help);
  void MakeSearch(QGridLayout& layout);
  void MakeButtons(QGridLayout& layout);
  void Edit(const FoundPreference& place, const std::string& value);
  void RestorePage();
  void Refresh();
  /// False, with the keyboard in the first field whose value is refused.
  bool Apply();
  bool HasChanges() const;
  const FoundPreference* FirstRefused() const;
  PreferencePageView& PageAt(std::size_t page) const { return *pages_[page]; }
  PreferenceEditor& EditorAt(const FoundPreference& place) const;
  void Show(const FoundPreference& place);

  void Search(const QString& query);
  void GoToFound(int step);
  void ShowFound();

  settings::Settings applied_, edited_;
  std::map<std::string_view, FoundPreference> refused_;  ///< by key; edited_ has the last good values
  std::vector<PreferencePageView*> pages_;
  std::vector<FoundPreference> found_;
  std::size_t shown_ = 0;  ///< in found_

  SearchLine* search_ = nullptr;
  QLabel* searchResult_ = nullptr;
  QListWidget* titles_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QPushButton* restore_ = nullptr;
  QPushButton* apply_ = nullptr;
};

}  // namespace ml::app
