#pragma once

#include <QScrollArea>
#include <ctime>
#include <functional>
#include <map>
#include <optional>

#include "metadata/iptc/iptc_sheet_values.h"
#include "metadata/ui/iptc_date_button.h"
#include "metadata/ui/iptc_field_editor.h"

class QGridLayout;
class QLabel;

namespace ml::metadata::ui {

/// One page of the sheet: a row for each of its fields, with what is to be said of a value below it.
class IptcPageView final : public QScrollArea {
  Q_OBJECT

 public:
  IptcPageView(IptcPage page, const std::function<IptcKnownTimes()>& times, QWidget* parent);
  ~IptcPageView() override;

  /// `existing` is the list of the image, which may lock fields and holds the values that are let be.
  void Show(const IptcSheetValues& values, const std::vector<IptcItem>& existing);
  void AddTo(IptcSheetValues& values) const;
  /// Dates as they are kept.
  void CleanDates();
  bool Holds(int dataset) const { return rows_.contains(dataset); }
  /// Tells what is wrong with a field and gives it the keyboard.
  void ShowFault(const IptcFault& fault);
  void FocusFirst();
  /// Words that the lists complete.
  void SetKnown(const QStringList& words);

 Q_SIGNALS:
  void edited();

 private:
  struct Row {
    IptcFieldEditor* editor = nullptr;
    QLabel* label = nullptr;
    QLabel* remark = nullptr;  ///< below the editor, for two fields side by side below both
    std::string explanation;
  };

  void AddField(const IptcField& field, const IptcField* time, QGridLayout& grid,
                const std::function<IptcKnownTimes()>& times);
  IptcFieldEditor* AddEditor(const IptcField& field, QLabel* label, QLabel* remark, QWidget* parent);
  void SetTime(int dateDataset, int timeDataset, std::optional<std::time_t> time);
  void Check(int dataset);
  static void Tell(const Row& row, const QString& text);
  const std::vector<std::string>& OriginalOf(int dataset) const;

  std::map<int, Row> rows_;
  QWidget* content_;
  QWidget* first_ = nullptr;
  IptcSheetValues original_;
};

}  // namespace ml::metadata::ui
