#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "settings/groups/html_image_size.h"
#include "settings/groups/watermark_settings.h"

namespace ml::settings {

/// Web galleries.
struct HtmlSettings {
  std::string templateBaseDir;        ///< see MakeDefaultSettings
  std::string templateName;           ///< name of the template set
  std::array<HtmlSizePair, 3> sizes;  ///< rows "Custom 1" to "Custom 3" of the sizes table
  std::uint8_t rawConvert = 0;
  int reuseExistingImages = 1;
  int deleteUnusedFiles = 0;
  int selectedSize = 0;  ///< row of the sizes table, 0..5
  int saveSettings = 0;
  int autoLevel = 0;
  std::string user1;
  std::string user2;
  std::string user3;
  int fastMode = 0;
  int addMainWatermark = 0;
  WatermarkSettings mainWatermark;
  int addThumbnailWatermark = 0;
  WatermarkSettings thumbnailWatermark;
  int convertToSrgb = 0;
  int lowerCaseFilenames = 1;
  int rememberOutputDir = 0;
  std::string outputDir;
  int useExifOwner = 1;
  std::string ownerString;
  std::string homeUrl;
  std::string nextText = "Next";
  std::string prevText = "Prev";
  std::string mainImageDir;
  std::string mainImageSuffix = "_std";
  std::string mainImagePrefix;
  std::string thumbnailDir;
  std::string thumbnailSuffix = "_thm";
  std::string thumbnailPrefix;
  int copyIptc = 0;
};

}  // namespace ml::settings
