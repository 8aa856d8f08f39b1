#include "imagefiles/display_colour.h"

#include <optional>
#include <utility>

#include "imagefiles/embedded_profile.h"
#include "imagefiles/source_profile.h"
#include "imaging/colour/transform_picture.h"

namespace ml::imagefiles {
namespace {

using imaging::ProfileSource;
using imaging::RenderingIntent;

std::optional<ProfileSource> FromPath(const std::string& path) {
  return path.empty() ? std::nullopt : std::optional<ProfileSource>(path);
}

std::optional<ProfileSource> FromFile(std::optional<metadata::IccProfile> embedded) {
  return embedded ? std::optional<ProfileSource>(*std::move(embedded)) : std::nullopt;
}

std::optional<ProfileSource> SourceOfPicture(ImageFile& file, const ColourOptions& options) {
  if (auto embedded = FromFile(ReadEmbeddedProfile(file.Path()))) return embedded;
  if (options.readProfileFromExif) {
    if (auto recorded = FromPath(GetSourceProfile(file.Exif()))) return recorded;
  }
  return FromPath(options.defaultProfile);
}

std::optional<ProfileSource> SourceOfThumbnail(const std::string& path, const ColourOptions& options) {
  if (auto embedded = FromFile(metadata::GetIccProfileData(path))) return embedded;
  return FromPath(options.defaultProfile);
}

bool ToMonitor(imaging::PixelBuffer& pixels, std::optional<ProfileSource> source, const ColourOptions& options,
               RenderingIntent intent) {
  if (!source) return false;
  return TransformPicture(pixels, *std::move(source), ProfileSource(options.monitorProfile), intent);
}

}  // namespace

bool ColourManagePicture(imaging::PixelBuffer& picture, ImageFile& file, const ColourOptions& options) {
  if (options.monitorProfile.empty() || picture.Empty()) return false;
  return ToMonitor(picture, SourceOfPicture(file, options), options, RenderingIntent::AbsoluteColorimetric);
}

bool ColourManageThumbnail(imaging::PixelBuffer& thumbnail, const std::string& path, const ColourOptions& options) {
  if (options.suppressThumbnails || options.monitorProfile.empty() || thumbnail.Empty()) return false;
  return ToMonitor(thumbnail, SourceOfThumbnail(path, options), options, RenderingIntent::Perceptual);
}

}  // namespace ml::imagefiles
