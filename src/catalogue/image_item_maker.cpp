#include "catalogue/image_item_maker.h"

#include <exception>

#include "imagefiles/thumbnail_maker.h"

namespace ml::catalogue {

ImageItem ImageItemMaker::Make(const std::string& path, int size) {
  ImageItem item;
  item.path = path;
  // One file of a batch: whatever is wrong with it becomes its record's reason, and the next one follows.
  try {
    item.pixels = imagefiles::MakeThumbnail(path, size, options_).pixels;
  } catch (const std::exception& error) {
    item.failure = error.what();
  } catch (...) {
    item.failure = path + ": cannot be read";
  }
  try {
    const auto companions = companions_.Find(path);
    item.hasSound = !companions.wav.empty();
    item.hasViewingJpeg = !companions.jpg.empty();
  } catch (const std::exception& error) {
    if (item.failure.empty()) item.failure = error.what();
  }
  return item;
}

}  // namespace ml::catalogue
