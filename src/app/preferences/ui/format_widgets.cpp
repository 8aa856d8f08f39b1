#include "app/preferences/ui/format_widgets.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "app/preferences/place_tokens.h"
#include "app/preferences/preference_search.h"
#include "app/preferences/ui/text_line.h"
#include "metadata/format_strings/format_strings.h"
#include "platform/text.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::PathFromQt;
using platform::ui::ToQString;

constexpr qsizetype kExampleLines = 6, kExampleCharacters = 500;

void AddToken(QMenu& menu, QLineEdit* line, std::string_view meaning, std::string_view token) {
  const auto text = ToQString(token);
  auto* action = menu.addAction(QStringLiteral("%1\t%2").arg(ToQString(meaning), text));
  QObject::connect(action, &QAction::triggered, line, [line, text] {
    line->insert(text);
    line->setFocus(Qt::OtherFocusReason);
  });
}

void AddTokens(QMenu& menu, QLineEdit* line, TextForm form) {
  std::vector<QMenu*> groups;
  for (const auto title : metadata::kTokenGroups) groups.push_back(menu.addMenu(ToQString(title)));
  for (const auto& row : metadata::FormatTokens()) {
    AddToken(*groups[static_cast<std::size_t>(row.group)], line, row.meaning.empty() ? row.label : row.meaning,
             row.token);
  }
  if (form == TextForm::Lines) return;
  auto* place = menu.addMenu(QStringLiteral("Place in the List"));
  AddToken(*place, line, "Number of this image", kImageNumberToken);
  AddToken(*place, line, "Number of all images", kNumberOfImagesToken);
}

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
  auto* button = new QPushButton(QStringLiteral("Insert"), parent);
  button->setAutoDefault(false);
  button->setAccessibleName(QStringLiteral("Insert into %1").arg(ToQString(PlainLabel(row.label)).toLower()));
  button->setMenu(new QMenu(button));
  AddTokens(*button->menu(), line, field.form);
  auto* label = MakeExample(row, parent);
  const auto showExample = [=](const std::string& format) { label->setText(ExampleText(example, field.form, format)); };
  QObject::connect(line, &QLineEdit::textChanged, line, [=](const QString& text) {
    showExample(PathFromQt(text));
    edited(PathFromQt(text));
  });
  const auto show = [=](const std::string& value) {
    const QSignalBlocker quiet(line);
    line->setText(LineText(value));
    line->setCursorPosition(0);  // a format is known by its begin
    showExample(value);
  };
  return {SideBySide(line, button, parent), line, show, label};
}

}  // namespace ml::app
