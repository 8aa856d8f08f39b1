#pragma once

namespace ml::settings {

/// Images sent by mail.
struct EmailSettings {
  int sizingMethod = 2;
  int jpegQuality = 70;
  int maxHeight = 640;
  int maxWidth = 640;
  int asIs = 0;  ///< send the files unchanged
  int convertRaw = 0;
};

}  // namespace ml::settings
