#pragma once

#include <optional>

#include "catalogue/transfer_files.h"

class QPoint;
class QWidget;

namespace ml::app {

/// What is to become of files that were dropped without a key that says it: a menu at `position` on the screen.
/// Nothing if the user takes neither.
std::optional<catalogue::TransferKind> AskTransferKind(QWidget& parent, const QPoint& position);

}  // namespace ml::app
