#pragma once

#include <QWidget>

#include "catalogue/image_list.h"
#include "catalogue/thumbnail_thread.h"
#include "settings/settings.h"

namespace ml::catalogue::ui {
class ThumbnailListView;
}

namespace ml::app {

/// A few thumbnails as the list would draw them, for looking only: plain, selected and tagged.
class SchemeExample final : public QWidget {
  Q_OBJECT

 public:
  explicit SchemeExample(QWidget* parent);
  ~SchemeExample() override;

  void Show(const settings::CatalogueSettings& settings);

 private:
  catalogue::ImageList list_;
  catalogue::CThumbnailThread worker_;
  catalogue::ui::ThumbnailListView* view_;
};

}  // namespace ml::app
