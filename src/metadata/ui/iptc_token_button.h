#pragma once

#include <QPointer>
#include <QPushButton>

#include "metadata/ui/iptc_field_editor.h"
#include "platform/ui/token_menu.h"

namespace ml::metadata::ui {

/// A button with the menu of all tokens of format strings, which go into the field of its window that has, or last had,
/// the keyboard.
class IptcTokenButton final : public QPushButton {
  Q_OBJECT

 public:
  /// `example` is asked whenever a part of the menu opens.
  IptcTokenButton(const platform::ui::TokenExample& example, QWidget* parent);
  ~IptcTokenButton() override;

  /// Brings it in line with the field, which may have been hidden or locked.
  void Refresh();

 private:
  void FocusChanged(QWidget* now);
  void Insert(const QString& token);

  QPointer<IptcFieldEditor> field_;
};

}  // namespace ml::metadata::ui
