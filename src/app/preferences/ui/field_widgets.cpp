#include "app/preferences/ui/field_widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "app/preferences/preference_search.h"
#include "app/preferences/preference_values.h"
#include "app/preferences/ui/format_widgets.h"
#include "app/preferences/ui/number_box.h"
#include "app/preferences/ui/text_line.h"
#include "platform/numbers.h"
#include "platform/ui/byte_line.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;
using Edited = std::function<void(const std::string&)>;

constexpr int kNarrowestChoice = 160;

/// See NumberBox.
class ChoiceBox final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }
};

FieldWidgets Make(const CheckField&, const PreferenceRow& row, const Edited& edited, QWidget* parent) {
  auto* box = new QCheckBox(ToQString(row.label), parent);
  QObject::connect(box, &QCheckBox::toggled, box, [edited](bool on) { edited(on ? "1" : "0"); });
  return {box, box, [box](const std::string& value) {
            const QSignalBlocker quiet(box);
            box->setChecked(value != "0");
          }};
}

FieldWidgets Make(const NumberField& field, const PreferenceRow&, const Edited& edited, QWidget* parent) {
  auto* box = new NumberBox(field.smallest, field.largest, parent);
  box->setSuffix(ToQString(field.unit));
  QObject::connect(box, &QSpinBox::valueChanged, box, [edited](int value) { edited(std::to_string(value)); });
  return {box, box, [box](const std::string& value) {
            const QSignalBlocker quiet(box);
            box->setValue(platform::LeadingInteger(value));
          }};
}

FieldWidgets Make(const ChoiceField& field, const PreferenceRow&, const Edited& edited, QWidget* parent) {
  auto* box = new ChoiceBox(parent);
  box->setFocusPolicy(Qt::StrongFocus);
  for (const auto& choice : field.choices) box->addItem(ToQString(choice.text));
  box->setMinimumWidth(std::min(box->sizeHint().width(), kNarrowestChoice));
  QObject::connect(box, &QComboBox::activated, box, [edited, field](int index) {
    if (index >= 0) edited(std::string(field.choices[static_cast<std::size_t>(index)].value));
  });
  return {box, box, [box, field](const std::string& value) {
            const QSignalBlocker quiet(box);
            box->setCurrentIndex(static_cast<int>(ChoiceOf(field, value)));
          }};
}

FieldWidgets Make(const CommandLineField&, const PreferenceRow&, const Edited& edited, QWidget* parent) {
  auto* line = MakeTextLine(parent);
  QObject::connect(line, &QLineEdit::textEdited, line, [edited, line] { edited(line->Bytes()); });
  return {line, line, [line](const std::string& value) { line->SetBytes(value); }};
}

FieldWidgets MakeProfile(const PreferenceRow& row, const BrowseProfile& browse, const Edited& edited, QWidget* parent) {
  auto* line = MakeTextLine(parent);
  line->setPlaceholderText(QStringLiteral("None"));
  line->setClearButtonEnabled(true);
  auto* button = new QPushButton(QStringLiteral("Browse..."), parent);
  button->setAutoDefault(false);
  button->setAccessibleName(QStringLiteral("Browse for %1").arg(ToQString(PlainLabel(row.label)).toLower()));
  // The clear button, too, is an edit.
  QObject::connect(line, &QLineEdit::textChanged, line, [edited, line] { edited(line->Bytes()); });
  const auto show = [line](const std::string& value) {
    const QSignalBlocker quiet(line);
    line->SetBytes(value);
  };
  QObject::connect(button, &QPushButton::clicked, line, [line, browse, edited, show] {
    const auto chosen = browse ? browse(line->Bytes()) : std::nullopt;
    if (!chosen) return;
    show(*chosen);
    edited(*chosen);
  });
  return {SideBySide(line, button, parent), line, show};
}

}  // namespace

FieldWidgets MakeFieldWidgets(const PreferenceRow& row, const FieldHelp& help, const Edited& edited, QWidget* parent) {
  return std::visit(
      [&](const auto& field) {
        using Field = std::remove_cvref_t<decltype(field)>;
        if constexpr (std::is_same_v<Field, ProfileField>) {
          return MakeProfile(row, help.browse, edited, parent);
        } else if constexpr (std::is_same_v<Field, FormatField>) {
          return MakeFormatWidgets(field, row, help.example, edited, parent);
        } else {
          return Make(field, row, edited, parent);
        }
      },
      row.field);
}

}  // namespace ml::app
