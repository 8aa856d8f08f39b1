#include "app/preferences/ui/format_widgets.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "app/preferences/preference_search.h"
#include "app/preferences/ui/text_line.h"
#include "app/preferences/ui/token_button.h"
#include "metadata/format_strings/format_strings.h"
#include "platform/text.h"
#include "platform/ui/byte_line.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

constexpr qsizetype kExampleLines = 6, kExampleCharacters = 500;

/// A comment may be long, and so may one of its lines.
QString Beginning(const QString& text) {
  const auto lines = text.split(QLatin1Char('\n'));
  const auto shown =
      lines.first(std::min(lines.size(), kExampleLines)).join(QLatin1Char('\n')).left(kExampleCharacters);
  return shown.size() < text.size() ? shown + QStringLiteral(" \u2026") : shown;
}

QString ExampleText(const FormatExample& example, TextForm form, const std::string& format) {
  const auto text = example ? example(form, format) : std::nullopt;
  return Beginning(ToQString(text ? *text : platform::ToDisplayLine(metadata::DescribeFormatString(format))));
}

QLabel* MakeExample(const PreferenceRow& row, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // a long path does not widen the page
  label->setForegroundRole(QPalette::PlaceholderText);
  label->setObjectName(ToQString(row.key) + QStringLiteral("Example"));
  label->setAccessibleName(QStringLiteral("Example of %1").arg(ToQString(PlainLabel(row.label)).toLower()));
  return label;
}

}  // namespace

FieldWidgets MakeFormatWidgets(const FormatField& field, const PreferenceRow& row, const FormatExample& example,
                               const std::function<void(const std::string&)>& edited, QWidget* parent) {
  auto* line = MakeTextLine(parent);
  auto* button = MakeTokenButton(line, field.form, parent);
  button->setAccessibleName(QStringLiteral("Insert into %1").arg(ToQString(PlainLabel(row.label)).toLower()));
  auto* label = MakeExample(row, parent);
  const auto showExample = [=](const std::string& format) { label->setText(ExampleText(example, field.form, format)); };
  QObject::connect(line, &QLineEdit::textChanged, line, [=] {
    showExample(line->Bytes());
    edited(line->Bytes());
  });
  const auto show = [=](const std::string& value) {
    const QSignalBlocker quiet(line);
    line->SetBytes(value);
    line->setCursorPosition(0);  // a format is known by its begin
    showExample(value);
  };
  return {SideBySide(line, button, parent), line, show, label};
}

}  // namespace ml::app
