#include "imagefiles/size_fitting.h"

#include <algorithm>

namespace ml::imagefiles {
namespace {

/// side * numerator / denominator without overflow.
int Share(int side, int numerator, int denominator) {
  return static_cast<int>(static_cast<long long>(side) * numerator / denominator);
}

/// The same where a picture has at least one pixel.
int Proportional(int side, int numerator, int denominator) { return std::max(1, Share(side, numerator, denominator)); }

}  // namespace

imaging::PictureSize FitToLimits(int sourceWidth, int sourceHeight, const DisplayLimits& limits) {
  imaging::PictureSize size{sourceWidth, sourceHeight};
  if (size.width > limits.maxWidth) {
    size = {std::max(1, limits.maxWidth), Proportional(sourceHeight, limits.maxWidth, sourceWidth)};
  }
  if (size.height > limits.maxHeight) {
    size = {Proportional(sourceWidth, limits.maxHeight, sourceHeight), std::max(1, limits.maxHeight)};
    if (size.width < limits.altWidth) {
      size = {limits.altWidth, Proportional(sourceHeight, limits.altWidth, sourceWidth)};
      if (size.height > limits.altHeight) {
        size = {Proportional(sourceWidth, limits.altHeight, sourceHeight), std::max(1, limits.altHeight)};
      }
    }
  }
  if (size.width > sourceWidth || size.height > sourceHeight) return {sourceWidth, sourceHeight};
  return size;
}

imaging::PictureSize FillBox(imaging::PictureSize picture, imaging::PictureSize box) {
  imaging::PictureSize size{box.width, Share(picture.height, box.width, picture.width)};
  if (size.height > box.height) size = {Share(picture.width, box.height, picture.height), box.height};
  return size;
}

}  // namespace ml::imagefiles
