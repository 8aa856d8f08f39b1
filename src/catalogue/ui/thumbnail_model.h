#pragma once

#include <QAbstractListModel>
#include <functional>
#include <string>
#include <utility>

#include "catalogue/image_list.h"
#include "catalogue/thumbnail_thread.h"

namespace ml::catalogue::ui {

/// The catalogue and its thumbnails as rows; copies neither. Whoever changes the list calls ListChanged()
/// before the toolkit looks at the rows again. List and worker outlive the model.
class ThumbnailModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  ThumbnailModel(const ImageList& list, const CThumbnailThread& worker, QObject* parent);

  /// Other entries, or the same in another order.
  void ListChanged();
  /// Called for the tool tip of an entry whose thumbnail is no failure.
  void SetDescriber(std::function<std::string(const std::string& path)> describe) { describe_ = std::move(describe); }

  /// Whether `row` is an entry of the list as it is now.
  bool Has(int row) const { return row < rows_ && list_.ValidIndex(row); }
  const std::string& Path(int row) const { return list_.files[static_cast<std::size_t>(row)]; }
  ItemMarks Marks(int row) const { return list_.marks[static_cast<std::size_t>(row)]; }
  bool HasFocus(int row) const { return list_.focusIndex == row; }
  ThumbnailState State(int row) const { return worker_.State(row); }
  /// Null as long as the thumbnail is to do.
  const ImageItem* Item(int row) const { return worker_.Item(row); }
  /// Edge of the square that the thumbnails were made for, in pixels of the image.
  int MadeSize() const { return worker_.ThumbnailSize(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  QString SpokenText(int row) const;
  QString ToolTip(int row) const;

  const ImageList& list_;
  const CThumbnailThread& worker_;
  std::function<std::string(const std::string& path)> describe_;
  int rows_ = 0;  ///< what the views were told; may lag behind the list until ListChanged()
};

}  // namespace ml::catalogue::ui
