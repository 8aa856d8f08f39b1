#include "app/preferences/ui/scheme_example.h"

#include <QVBoxLayout>
#include <algorithm>
#include <cstddef>

#include "catalogue/ui/thumbnail_list_view.h"

namespace ml::app {
namespace {

constexpr int kEdge = 80;
constexpr int kSelected = 1, kTagged = 2;

/// A grey sky over darker ground, three by two.
catalogue::ImageItem DrawThumbnail(const std::string& path, int size) {
  catalogue::ImageItem item;
  item.path = path;
  item.pixels = imaging::MakePixelBuffer(size, size * 2 / 3);
  const int height = item.pixels.height;
  for (int y = 0; y < height; ++y) {
    const int grey = 3 * y < 2 * height ? 205 - 60 * y / height : 95;
    std::fill_n(item.pixels.Row(y), item.pixels.RowBytes(), static_cast<std::byte>(grey));
  }
  return item;
}

}  // namespace

SchemeExample::SchemeExample(QWidget* parent)
    : QWidget(parent),
      worker_(
          list_, DrawThumbnail,
          [this](int index) { QMetaObject::invokeMethod(this, [this, index] { view_->ItemReady(index); }); }, 1),
      view_(new catalogue::ui::ThumbnailListView(list_, worker_, this)) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  view_->setFocusPolicy(Qt::NoFocus);
  view_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view_->SetThumbnailSize(kEdge);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
  worker_.SetThumbnailSize(view_->ThumbnailPixels());
  worker_.LoadList({"/IMG_0041.JPG", "/IMG_0042.CRW", "/IMG_0043.TIF"});
  list_.SelectOnly(kSelected);
  list_.SetTag(kTagged, true);
  view_->ListReplaced();
  const catalogue::ui::CellGeometry cell{.thumbnailSize = kEdge, .lineHeight = view_->fontMetrics().height()};
  setFixedSize(cell.CellSize().width() * list_.Count() + 8, cell.CellSize().height() + 8);
  setAccessibleName(QStringLiteral("Example of the thumbnail list"));
}

SchemeExample::~SchemeExample() {
  worker_.Pause();
  delete view_;  // it knows list and worker
}

void SchemeExample::Show(const settings::CatalogueSettings& settings) {
  view_->SetColours(settings.thumbnailBackgroundColour);
  view_->SetTagOutline(settings.outlineTaggedThumbnails);
}

}  // namespace ml::app
