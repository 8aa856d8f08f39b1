#include "platform/ui/token_menu.h"

#include <QLineEdit>
#include <QMenu>

#include "platform/ui/qt_text.h"

namespace ml::platform::ui {
namespace {

/// A name, a comment or the whole text of the shooting data may be long.
constexpr qsizetype kLongestExample = 32;

/// In a menu an ampersand would mark a key.
QString Plain(QString text) { return text.replace(QLatin1Char('&'), QStringLiteral("&&")); }

QString EntryText(const TokenEntry& entry, const TokenExample& example) {
  auto text = ToQString(entry.meaning);
  auto value = example ? ToLabel(example(entry.token)).trimmed() : QString();
  if (value.size() > kLongestExample) value = value.left(kLongestExample) + QChar(0x2026);
  if (!value.isEmpty()) text += QStringLiteral(": ") + value;
  return Plain(text) + QLatin1Char('\t') + ToQString(entry.token);
}

}  // namespace

void AddTokens(QMenu& menu, const QString& title, std::span<const TokenEntry> tokens, const TokenExample& example,
               const TokenInserter& insert) {
  auto* part = menu.addMenu(title);
  for (const auto& entry : tokens) {
    auto* action = part->addAction(EntryText(entry, {}));
    if (example) {
      QObject::connect(part, &QMenu::aboutToShow, action,
                       [action, entry, example] { action->setText(EntryText(entry, example)); });
    }
    QObject::connect(action, &QAction::triggered, part, [entry, insert] { insert(ToQString(entry.token)); });
  }
}

TokenInserter InserterInto(QLineEdit& line) {
  return [&line](const QString& token) {
    line.insert(token);
    line.setFocus(Qt::OtherFocusReason);
  };
}

}  // namespace ml::platform::ui
