#include "catalogue/ui/thumbnail_model.h"

#include "catalogue/ui/thumbnail_colours.h"
#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::catalogue::ui {

using platform::ui::ToLabel;

ThumbnailModel::ThumbnailModel(const ImageList& list, const CThumbnailThread& worker, QObject* parent)
    : QAbstractListModel(parent), list_(list), worker_(worker), rows_(list.Count()) {}

void ThumbnailModel::ListChanged() {
  beginResetModel();
  rows_ = list_.Count();
  endResetModel();
}

int ThumbnailModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

Qt::ItemFlags ThumbnailModel::flags(const QModelIndex& index) const {
  return QAbstractListModel::flags(index) | (index.isValid() ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

QVariant ThumbnailModel::data(const QModelIndex& index, int role) const {
  const int row = index.row();
  if (!index.isValid() || !Has(row)) return {};
  switch (role) {
    case Qt::DisplayRole:
      return ToLabel(platform::FileName(Path(row)));
    case Qt::ToolTipRole:
      return ToolTip(row);
    case Qt::AccessibleTextRole:
      return SpokenText(row);
    default:
      return {};
  }
}

QString ThumbnailModel::SpokenText(int row) const {
  QStringList parts{ToLabel(platform::FileName(Path(row)))};
  if (Marks(row).tagged) parts += QStringLiteral("tagged");
  const auto kind = KindOfFile(Path(row));
  if (!kind.word.empty()) parts += ToLabel(kind.word);
  if (const auto* item = Item(row)) {
    if (item->hasViewingJpeg) parts += QStringLiteral("with viewing JPEG");
    if (item->hasSound) parts += QStringLiteral("with sound");
  }
  if (State(row) == ThumbnailState::Failed) parts += QStringLiteral("cannot be shown");
  parts += QStringLiteral("%1 of %2").arg(row + 1).arg(rows_);
  return parts.join(QLatin1String(", "));
}

QString ThumbnailModel::ToolTip(int row) const {
  QString text = ToLabel(platform::FileName(Path(row)));
  const auto* item = Item(row);
  if (State(row) == ThumbnailState::Failed && item != nullptr && !item->failure.empty()) {
    text += QLatin1Char('\n') + platform::ui::ToQString(item->failure);
  } else if (describe_) {
    const auto description = describe_(Path(row));
    if (!description.empty()) text += QLatin1Char('\n') + platform::ui::ToQString(description);
  }
  return platform::ui::PlainToolTip(text);
}

}  // namespace ml::catalogue::ui
