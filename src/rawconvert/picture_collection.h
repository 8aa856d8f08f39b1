#pragma once

#include <memory>
#include <string>

#include "rawconvert/development_sdk.h"

namespace ml::rawconvert {

/// Longest name of a raw file that is developed, in characters, extension included.
inline constexpr std::size_t kMaxRawName = 31;
/// Whether the last component of `path` is short enough.
bool IsDevelopableName(const std::string& path);

/// The picture of one raw file, as the conversion asks for it: open, has a picture, select, has a picture, develop.
class PictureCollection {
 public:
  /// A name over the limit is refused without a call of `sdk`, which must outlive this: there is no picture then.
  /// Throws DevelopError.
  PictureCollection(const std::string& path, DevelopmentSdk& sdk);

  bool HasPicture() const { return picture_ != nullptr; }
  /// Only 0 exists; tries again to find the file.
  void SelectPicture(int index);
  /// Of the developed picture. Needs HasPicture().
  PictureSize Size() const { return picture_->Size(); }
  /// As DevelopablePicture::Develop; a linear render is always 16-bit. Needs HasPicture().
  imaging::PixelBuffer Develop(RawDevelopParams& params, DevelopRequest request, const DevelopWatch& watch);

 private:
  std::string path_;
  DevelopmentSdk& sdk_;
  std::unique_ptr<DevelopablePicture> picture_;
};

}  // namespace ml::rawconvert
