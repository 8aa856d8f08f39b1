#pragma once

#include <QApplication>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/image_list.h"
#include "catalogue/thumbnail_thread.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "platform/paths.h"

namespace ml::test {

/// A picture with a gradient that shows if rows or channels are mixed up.
inline imaging::PixelBuffer Gradient(int width, int height) {
  auto pixels = imaging::MakePixelBuffer(width, height, imaging::PixelOrder::Bgr);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      auto* p = pixels.Row(y) + std::ptrdiff_t{3} * x;
      p[0] = std::byte(200 - 120 * y / height);
      p[1] = std::byte(90 + 100 * x / width);
      p[2] = std::byte(70 + 120 * y / height);
    }
  }
  return pixels;
}

/// What a maker of thumbnails tells of files by their names: "bad" fails, "tall" stands upright.
inline catalogue::ImageItem FakeItem(const std::string& path, int size) {
  catalogue::ImageItem item;
  item.path = path;
  const auto has = [&](const char* word) { return path.find(word) != std::string::npos; };
  if (has("bad")) {
    item.failure = "Unable to read the image:\n<b>" + path + "</b>";
    return item;
  }
  item.pixels = has("tall") ? Gradient(size * 2 / 3, size) : Gradient(size, size * 2 / 3);
  item.hasSound = has("sound");
  item.hasViewingJpeg = has("viewing");
  return item;
}

/// A list with its worker and its view on screen.
struct ThumbnailList {
  catalogue::ImageList list;
  std::unique_ptr<catalogue::CThumbnailThread> worker;
  std::unique_ptr<catalogue::ui::ThumbnailListView> view;

  explicit ThumbnailList(std::vector<std::string> names, QSize size = {500, 400}) {
    worker = std::make_unique<catalogue::CThumbnailThread>(
        list, FakeItem,
        [this](int index) {
          QMetaObject::invokeMethod(qApp, [this, index] {
            if (view) view->ItemReady(index);
          });
        },
        1);
    view = std::make_unique<catalogue::ui::ThumbnailListView>(list, *worker);
    view->resize(size);
    view->SetThumbnailSize(80);
    Load(std::move(names));
    view->show();
    static_cast<void>(QTest::qWaitForWindowExposed(view.get()));
    view->activateWindow();
    view->setFocus();
    QCoreApplication::processEvents();
  }
  ~ThumbnailList() {
    worker->Pause();  // nothing is on its way to the view any more
    QCoreApplication::processEvents();
    view.reset();
  }
  ThumbnailList(const ThumbnailList&) = delete;
  ThumbnailList& operator=(const ThumbnailList&) = delete;

  void Load(std::vector<std::string> names) {
    for (auto& name : names) name = "/shots/" + name;
    worker->SetThumbnailSize(view->ThumbnailPixels());
    worker->LoadList(std::move(names));
    view->ListReplaced();
  }
  void WaitForAll() {
    static_cast<void>(QTest::qWaitFor([this] { return worker->FinishedCount() == list.Count(); }));
    QCoreApplication::processEvents();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(view.get(), key, modifiers);
  }
};

/// "IMG_0000.JPG" and so on.
inline std::vector<std::string> Numbered(int count) {
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) {
    names.push_back(QString::asprintf("IMG_%04d.JPG", i).toStdString());
  }
  return names;
}

}  // namespace ml::test
