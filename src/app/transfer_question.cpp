#include "app/transfer_question.h"

#include <QMenu>

namespace ml::app {

std::optional<catalogue::TransferKind> AskTransferKind(QWidget& parent, const QPoint& position) {
  using catalogue::TransferKind;
  QMenu menu(&parent);
  const auto* move = menu.addAction(QStringLiteral("&Move Here"));
  const auto* copy = menu.addAction(QStringLiteral("&Copy Here"));
  menu.addSeparator();
  menu.addAction(QStringLiteral("C&ancel"));
  const auto* chosen = menu.exec(position);
  if (chosen == move) return TransferKind::Move;
  if (chosen == copy) return TransferKind::Copy;
  return std::nullopt;
}

}  // namespace ml::app
