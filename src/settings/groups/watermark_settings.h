#pragma once

#include <string>

#include "platform/font_record.h"

namespace ml::settings {

/// A caption or an icon drawn into finished pictures. Colours are 0x00BBGGRR.
struct WatermarkSettings {
  std::string text = {};  ///< a format string
  platform::FontRecord font = platform::FontRecord::FromPoints("Arial", 10);
  int displayIcon = 0;  ///< draw the icon rather than the text
  std::string icon = {};
  int textAlignment = 0;  ///< 0 left, 1 centre, 2 right
  int backgroundColour = 0xFFFFFF;
  int foregroundColour = 0;
  int backgroundTrans = 3;  ///< 0 opaque .. 4 transparent, as foregroundTrans
  int foregroundTrans = 3;
  int placement = 8;   ///< 0..9
  int horzOffset = 5;  ///< margins in pixels
  int vertOffset = 5;
};

}  // namespace ml::settings
