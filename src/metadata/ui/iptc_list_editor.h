#pragma once

#include <QStringList>

#include "metadata/ui/iptc_field_editor.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QStringListModel;

namespace ml::metadata::ui {

/// A list of values: a line to enter new ones, several at once if they are separated, and the list, in which they are
/// changed in place and removed. A value that is there already is not entered twice.
class IptcListEditor final : public IptcFieldEditor {
  Q_OBJECT

 public:
  IptcListEditor(const IptcField& field, QWidget* parent);

  void Show(const std::vector<std::string>& values) override;
  /// Words that still stand in the line count.
  std::vector<std::string> Values() const override;
  void Enter(const std::string& value) override;
  void Insert(const QString& text) override;
  QWidget* Focus() override;
  /// Words that the line completes.
  void SetKnown(const QStringList& words);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddFromLine();
  void Append(const std::string& value);
  void RemoveSelected();
  void Paste();
  bool OnKey(QObject* watched, QEvent* event);

  QLineEdit* line_;
  QListWidget* list_;
  QPushButton* remove_;
  QStringListModel* known_;
};

}  // namespace ml::metadata::ui
