#include "metadata/edit/exif_comment_writer.h"

#include "metadata/messages.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kEncoding = "ASCII\0\0\0"sv;

}  // namespace

std::optional<std::string> WriteExifComment(ExifSegment& segment, std::string_view text) {
  const auto& layout = segment.Layout();
  if (const auto field = layout.userComment) {
    std::string value(kEncoding);
    value += platform::CutToBytes(text, field->size - kEncoding.size());
    segment.FillField(*field, platform::AsBytes(value));
  } else if (const auto description = layout.imageDescription) {
    if (text.size() >= description->size) return messages::kDescriptionTooShort;
    segment.FillField(*description, platform::AsBytes(text));
  } else {
    return messages::kNoJpegComment;
  }
  return std::nullopt;
}

}  // namespace ml::metadata
