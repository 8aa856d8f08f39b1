#include "catalogue/image_item_maker.h"

#include <exception>
#include <mutex>
#include <optional>

#include "imagefiles/eos1d_test.h"
#include "imagefiles/thumbnail_maker.h"
#include "platform/companion_set.h"
#include "platform/dir_index.h"
#include "platform/paths.h"

namespace ml::catalogue {

struct ImageItemMaker::Neighbours {
  std::mutex lock;
  std::optional<platform::DirIndex> index;

  bool Has(const std::string& path, std::string_view extension) {
    const std::lock_guard guard(lock);
    const auto directory = platform::DirectoryOf(path);
    if (!index || index->Directory() != directory) index.emplace(std::string(directory));
    return !platform::FindCompanion(path, extension, *index).empty();
  }
};

ImageItemMaker::ImageItemMaker(const imagefiles::ImageFileOptions& options)
    : options_(options), neighbours_(std::make_shared<Neighbours>()) {}

ImageItem ImageItemMaker::operator()(const std::string& path, int size) const {
  ImageItem item;
  item.path = path;
  try {
    item.hasSound = neighbours_->Has(path, ".wav");
    item.hasViewingJpeg = options_.bindJpegToEos1DRaw && platform::EndsWithNoCase(path, ".tif") &&
                          neighbours_->Has(path, ".jpg") && imagefiles::catalogueEos1D(path);
    item.pixels = imagefiles::MakeThumbnail(path, size, options_).pixels;
  } catch (const std::exception& error) {
    item.failure = error.what();
  } catch (...) {
    item.failure = "Unable to make a thumbnail of:\n" + path;
  }
  return item;
}

}  // namespace ml::catalogue
