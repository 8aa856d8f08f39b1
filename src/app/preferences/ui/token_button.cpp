#include "app/preferences/ui/token_button.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <string_view>
#include <vector>

#include "app/preferences/place_tokens.h"
#include "metadata/format_strings/format_strings.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

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

}  // namespace

QPushButton* MakeTokenButton(QLineEdit* line, TextForm form, QWidget* parent) {
  auto* button = new QPushButton(QStringLiteral("Insert"), parent);
  button->setAutoDefault(false);
  button->setMenu(new QMenu(button));
  AddTokens(*button->menu(), line, form);
  return button;
}

}  // namespace ml::app
