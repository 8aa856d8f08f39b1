#pragma once

#include <cstdint>
#include <string>

namespace ml::settings {

/// The list of images, the views and what the program does with files on its own.
struct CatalogueSettings {
  std::string imageFilename;  ///< the last image shown
  int sortMethod = 0;         ///< the sort method for directories without an order file
  int reverseSort = 0;
  std::uint8_t recycleDeletedFiles = 1;  ///< delete into the trash
  int thumbnailSize = 0;                 ///< 0, 1 or 2
  int extraLargeThumbnailSize = 240;     ///< pixels
  int thumbnailMode = 1;                 ///< the view entered at start
  std::uint8_t fullView = 0;
  std::string thumbnailBackgroundColour = "Gray";  ///< a colour name
  std::uint8_t confirmDelete = 1;
  int ignoreEmbeddedThumbnails = 0;
  int useJpegExifOrientation = 0;
  int autoCreateEos1DRawJpegs = 0;  ///< make missing viewing JPEGs when a directory is loaded
  int largeEos1DRawJpegs = 1;       ///< viewing JPEGs in full instead of half size
  int bindJpegToEos1DRaw = 1;       ///< hide viewing JPEGs behind their raw files
  int loadDirectoryAtStartup = 1;
  int showHiddenDirectories = 0;  ///< rules hidden files as well
  int splitterPos = 200;          ///< pixels, as the next two; negative: the pane is collapsed
  int filmStripSplitterPos = 200;
  int filmStripHorizontalSplitterPos = 200;
  int wraparound = 0;
  int suppressOrderFile = 0;  ///< no order file is written unasked
  int imageDclickAction = 0;
  int tagsIgnoreExt = 0;  ///< tag lists match names without their extension
  int outlineTaggedThumbnails = 1;
  int preserveImageModificationTime = 0;  ///< edits of metadata leave the file's time alone
};

}  // namespace ml::settings
