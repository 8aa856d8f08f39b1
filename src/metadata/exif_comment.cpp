#include "metadata/exif_comment.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr int kCaption = 120;
constexpr std::array<std::string_view, 4> kCaptionFormats = {".nef", ".psd", ".jp2", ".jpf"};

std::string Trimmed(const std::string& text) { return std::string(platform::TrimRight(text)); }

}  // namespace

std::string GetExifComment(const ExifData& data) {
  const bool describes = data.comment.empty() && data.userCommentPtr == 0 && data.imageDescriptionPtr != 0;
  return Trimmed(describes ? data.imageDescription : data.comment);
}

std::string GetComment(const ExifData& data, const ExifOptions& options) {
  auto comment = GetExifComment(data);
  const bool inCaption =
      std::ranges::any_of(kCaptionFormats, [&](auto ending) { return platform::EndsWithNoCase(data.path, ending); });
  if (!options.iptcComments && !inCaption) return comment;
  const auto caption = std::ranges::find(data.iptc, kCaption, &IptcItem::dataset);
  if (caption == data.iptc.end()) return comment;
  auto text = Trimmed(caption->value);
  return text.empty() ? comment : text;
}

}  // namespace ml::metadata
