#pragma once

#include <string>

#include "platform/font_record.h"

namespace ml::settings {

/// Page set-up of single pictures and contact sheets. Lengths are tenths of a millimetre, whatever their keys say;
/// colours are 0x00BBGGRR.
struct PrintSettings {
  std::string printerProfile;
  int thumbnailRows = 10;
  int thumbnailCols = 8;
  int thumbnailSpacing = 15;
  std::string caption = "@file@";
  std::string footer = "@dir@, Page @page@ of @numPages@";
  int thumbnailRotate = 0;  ///< 0 off, 1 with the page, 2 landscape, 3 portrait
  int topMargin = 100;
  int bottomMargin = 100;
  int leftMargin = 100;
  int rightMargin = 100;
  int dpi = 240;
  int resizeToFit = 1;
  int rotateToFit = 0;
  int sameSizeThumbnails = 0;
  int imagePlacement = 2;  ///< 0..7
  int swapMargins = 0;
  int backgroundColour = 0xFFFFFF;
  std::string backgroundImage;
  int backgroundStyle = 0;  ///< 0 none, 1 colour, 2 image
  int addBorder = 1;
  platform::FontRecord captionFont = platform::FontRecord::FromPoints("Arial", 7);
  int captionColour = 0;
  platform::FontRecord footerFont = platform::FontRecord::FromPoints("Arial", 10);
  int footerColour = 0;
};

}  // namespace ml::settings
