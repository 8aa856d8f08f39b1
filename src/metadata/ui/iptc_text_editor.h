#pragma once

#include <QString>

#include "metadata/ui/iptc_field_editor.h"

class QLineEdit;
class QPlainTextEdit;

namespace ml::metadata::ui {

/// A line or a text. Of several values it shows the last, as the tokens of format strings do.
class IptcTextEditor final : public IptcFieldEditor {
  Q_OBJECT

 public:
  IptcTextEditor(const IptcField& field, QWidget* parent);

  void Show(const std::vector<std::string>& values) override;
  std::vector<std::string> Values() const override;
  void Enter(const std::string& value) override;
  void Insert(const QString& text) override;
  QWidget* Focus() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString Text() const;
  void SetText(const QString& text);
  QWidget* MakeText();
  QWidget* MakeLine(const IptcField& field);

  QLineEdit* line_ = nullptr;       ///< one of the two
  QPlainTextEdit* text_ = nullptr;  ///< for several lines
  std::vector<std::string> original_;
  QString shown_;  ///< how the widget gives back what it was given
};

}  // namespace ml::metadata::ui
