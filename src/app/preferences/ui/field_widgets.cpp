#include "app/preferences/ui/field_widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "app/preferences/preference_search.h"
#include "app/preferences/preference_values.h"
#include "app/preferences/ui/number_box.h"
#include "platform/numbers.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::PathFromQt;
using platform::ui::ToQString;
using Edited = std::function<void(const std::string&)>;

constexpr int kTextWidthInCharacters = 30;
constexpr int kNarrowestChoice = 160;

/// See NumberBox.
class ChoiceBox final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }
};

QLineEdit* MakeLine(QWidget* parent) {
  auto* line = new QLineEdit(parent);
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * kTextWidthInCharacters);
  return line;
}

/// Bytes as the line can give them back.
QString ToLine(const std::string& bytes) {
  return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

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
  auto* line = MakeLine(parent);
  QObject::connect(line, &QLineEdit::textEdited, line, [edited](const QString& text) { edited(PathFromQt(text)); });
  return {line, line, [line](const std::string& value) { line->setText(ToLine(value)); }};
}

FieldWidgets MakeProfile(const PreferenceRow& row, const BrowseProfile& browse, const Edited& edited, QWidget* parent) {
  auto* whole = new QWidget(parent);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* line = MakeLine(whole);
  line->setPlaceholderText(QStringLiteral("None"));
  line->setClearButtonEnabled(true);
  auto* button = new QPushButton(QStringLiteral("Browse..."), whole);
  button->setAutoDefault(false);
  button->setAccessibleName(QStringLiteral("Browse for %1").arg(ToQString(PlainLabel(row.label)).toLower()));
  layout->addWidget(line, 1);
  layout->addWidget(button);
  // The clear button, too, is an edit.
  QObject::connect(line, &QLineEdit::textChanged, line, [edited](const QString& text) { edited(PathFromQt(text)); });
  const auto show = [line](const std::string& value) {
    const QSignalBlocker quiet(line);
    line->setText(ToLine(value));
  };
  QObject::connect(button, &QPushButton::clicked, line, [line, browse, edited, show] {
    const auto chosen = browse ? browse(PathFromQt(line->text())) : std::nullopt;
    if (!chosen) return;
    show(*chosen);
    edited(*chosen);
  });
  return {whole, line, show};
}

}  // namespace

FieldWidgets MakeFieldWidgets(const PreferenceRow& row, const BrowseProfile& browse, const Edited& edited,
                              QWidget* parent) {
  return std::visit(
      [&](const auto& field) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(field)>, ProfileField>) {
          return MakeProfile(row, browse, edited, parent);
        } else {
          return Make(field, row, edited, parent);
        }
      },
      row.field);
}

}  // namespace ml::app
