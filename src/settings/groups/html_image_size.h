#pragma once

namespace ml::settings {

/// Size, quality and sharpening of one kind of gallery image.
struct HtmlImageSize {
  int width = 600;  ///< the box that the image is fitted into, in pixels
  int height = 500;
  int jpegQuality = 80;
  double radius = 0.5;
  double sigma = 1.0;
  double amount = 1.5;
  double threshold = 0.0;
};

/// One row of the sizes table.
struct HtmlSizePair {
  HtmlImageSize main;
  HtmlImageSize thumbnail{.width = 120, .height = 120, .jpegQuality = 90};
};

}  // namespace ml::settings
