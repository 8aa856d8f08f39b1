#include "support/jpeg_builder.h"

namespace ml::test {

TiffBuilder ExifDirectories(const ExifFields& fields) {
  TiffBuilder tiff(fields.bigEndian ? Endian::Big : Endian::Little);
  if (!fields.make.empty()) tiff.Ascii(271, fields.make);
  if (!fields.model.empty()) tiff.Ascii(272, fields.model);
  if (fields.orientation != 0) tiff.Short(274, static_cast<std::uint32_t>(fields.orientation));
  if (!fields.dateTime.empty()) {
    tiff.Ascii(306, fields.dateTime).Directory(34665, TiffBuilder().Ascii(36867, fields.dateTime));
  }
  if (!fields.thumbnail.empty()) tiff.Next(TiffBuilder().Short(259, 6).Pieces(513, 514, {fields.thumbnail}));
  return tiff;
}

std::string TiffBlock(const ExifFields& fields) { return ExifDirectories(fields).Build(); }
std::string ExifPayload(const ExifFields& fields) { return std::string("Exif\0\0", 6) + TiffBlock(fields); }

std::string JpegSegment(int marker, std::string_view payload) {
  const auto length = payload.size() + 2;
  std::string out{'\xff', static_cast<char>(marker), static_cast<char>(length >> 8), static_cast<char>(length & 0xff)};
  return out.append(payload);
}

std::string ExifSegment(const TiffBuilder& tiff) {
  return JpegSegment(0xe1, std::string("Exif\0\0", 6) + tiff.Build());
}
std::string ResourceSegment(std::string_view resources) {
  return JpegSegment(0xed, std::string("Photoshop 3.0\0", 14).append(resources));
}
std::string XmpSegment(std::string_view packet) {
  return JpegSegment(0xe1, std::string("http://ns.adobe.com/xap/1.0/\0", 29).append(packet));
}
std::string IccSegments(std::string_view profile, std::size_t count) {
  const auto piece = (profile.size() + count - 1) / count;
  std::string out;
  for (std::size_t i = 0; i < count; ++i) {
    auto payload = std::string("ICC_PROFILE\0", 12);
    payload += static_cast<char>(i + 1);
    payload += static_cast<char>(count);
    out += JpegSegment(0xe2, payload.append(profile.substr(piece * i, piece)));
  }
  return out;
}
std::string CommentSegment(std::string_view text) { return JpegSegment(0xfe, text); }

std::string InsertSegments(std::string_view jpeg, std::string_view segments) {
  return std::string(jpeg.substr(0, 2)).append(segments).append(jpeg.substr(2));
}

std::string WithExif(std::string_view jpeg, const ExifFields& fields) {
  return InsertSegments(jpeg, JpegSegment(0xe1, ExifPayload(fields)));
}

std::string WithClaimedSize(std::string jpeg, int width, int height) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(jpeg[at]); };
  std::size_t at = 2;
  while (byte(at + 1) != 0xc0 && byte(at + 1) != 0xc2) at += 2U + byte(at + 2) * 256U + byte(at + 3);
  jpeg[at + 5] = static_cast<char>(height >> 8), jpeg[at + 6] = static_cast<char>(height & 0xff);
  jpeg[at + 7] = static_cast<char>(width >> 8), jpeg[at + 8] = static_cast<char>(width & 0xff);
  return jpeg;
}

}  // namespace ml::test
