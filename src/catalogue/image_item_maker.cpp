#include "catalogue/image_item_maker.h"

#include <exception>

#include "imagefiles/display_colour.h"
#include "imagefiles/thumbnail_maker.h"

namespace ml::catalogue {

ImageItem ImageItemMaker::operator()(const std::string& path, int size) const {
  ImageItem item;
  item.path = path;
  // One file of many: whatever is wrong with it becomes its record's reason, and the next one follows.
  try {
    const auto companions = companions_->Find(path);
    item.hasSound = !companions.wav.empty();
    item.hasViewingJpeg = !companions.jpg.empty();
    item.pixels = imagefiles::MakeThumbnail(path, size, options_, &companions).pixels;
    imagefiles::ColourManageThumbnail(item.pixels, path, colour_);
  } catch (const std::exception& error) {
    item.failure = error.what();
  } catch (...) {
    item.failure = path + ": cannot be read";
  }
  return item;
}

}  // namespace ml::catalogue
