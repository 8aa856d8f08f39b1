#include "batch/ui/token_menu.h"

#include <QLineEdit>
#include <QMenu>

#include "batch/ui/token_help.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

using platform::ui::ToLabel;
using platform::ui::ToQString;

/// An old name may be long.
constexpr qsizetype kLongestExample = 32;

/// In a menu an ampersand would mark a key.
QString Plain(QString text) { return text.replace(QLatin1Char('&'), QStringLiteral("&&")); }

QString EntryText(const TokenHelp& help, const TokenExample& example) {
  auto text = ToQString(help.meaning);
  auto value = ToLabel(example(help.token));
  if (value.size() > kLongestExample) value = value.left(kLongestExample) + QChar(0x2026);
  if (!value.isEmpty()) text += QStringLiteral(": ") + value;
  return Plain(text) + QLatin1Char('\t') + ToQString(help.token);
}

}  // namespace

void FillTokenMenu(QMenu& menu, QLineEdit& line, const TokenExample& example) {
  for (const auto& group : TokenHelpGroups()) {
    auto* part = menu.addMenu(ToQString(group.title));
    for (const auto& help : group.tokens) {
      auto* action = part->addAction(QString());
      QObject::connect(part, &QMenu::aboutToShow, action,
                       [action, &help, example] { action->setText(EntryText(help, example)); });
      QObject::connect(action, &QAction::triggered, &line, [&line, &help] {
        line.insert(ToQString(help.token));
        line.setFocus(Qt::OtherFocusReason);
      });
    }
  }
}

}  // namespace ml::batch::ui
