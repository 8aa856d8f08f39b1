#include "support/camera_raw.h"

#include <array>
#include <cmath>
#include <utility>

#include "support/jpeg_builder.h"
#include "support/picture_tiff.h"

namespace ml::test {
namespace {

constexpr int kMakerNote = 37500, kPixelFilterPattern = 32803;

std::uint32_t Number(int value) { return static_cast<std::uint32_t>(value); }

std::string Thumbnail(const CameraRaw& raw) { return EncodeJpeg(PaintLandscape(160, 120, raw.seed)); }

TiffBuilder ExifDirectory(const CameraRaw& raw) {
  TiffBuilder exif(raw.order);
  exif.Rational(33434, 1, 125).Rational(33437, 56, 10).Short(34850, 2).Short(34855, 200).Undefined(36864, "0220");
  exif.Ascii(36867, raw.dateTime).Ascii(36868, raw.dateTime).Undefined(37121, std::string("\1\2\3\0", 4));
  exif.SignedRational(37380, -1, 3).Short(37383, 5).Rational(37386, 35).Undefined(40960, "0100");
  exif.Short(40961, 1).Long(40962, Number(raw.width)).Long(40963, Number(raw.height));
  return exif;
}

/// The tags that tell the camera and the moment, put before those of `tiff`.
TiffBuilder& AddCamera(TiffBuilder& tiff, const CameraRaw& raw, std::string_view make, std::string_view model) {
  tiff.Ascii(271, raw.make.empty() ? make : raw.make).Ascii(272, raw.model.empty() ? model : raw.model);
  tiff.Short(274, Number(raw.orientation)).Ascii(305, "Sample 1.0").Ascii(306, raw.dateTime);
  return tiff;
}

/// Two samples in three bytes, the higher bits first.
std::string Packed(const std::vector<std::uint16_t>& samples) {
  ByteString out(Endian::Big);
  for (std::size_t i = 0; i + 1 < samples.size(); i += 2) out.Number(samples[i] << 12 | samples[i + 1], 3);
  return out.Take();
}
std::string InWords(const std::vector<std::uint16_t>& samples, Endian order) {
  ByteString out(order);
  for (const auto sample : samples) out.Short(sample);
  return out.Take();
}
/// `bytes` with every four of them turned round; the format counts its bits in little-endian words.
std::string Swapped(std::string bytes) {
  for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    std::swap(bytes[i], bytes[i + 3]);
    std::swap(bytes[i + 1], bytes[i + 2]);
  }
  return bytes;
}

TiffBuilder SensorDirectory(const CameraRaw& raw, std::uint32_t bits, const std::string& data) {
  TiffBuilder tiff(raw.order);
  tiff.Long(254, 0).Long(256, Number(raw.width)).Long(257, Number(raw.height)).Short(258, bits).Short(259, 1);
  tiff.Short(262, kPixelFilterPattern).Pieces(273, 279, {data}).Short(277, 1).Long(278, Number(raw.height));
  tiff.Short(284, 1).Short(33421, {2, 2}).Bytes(33422, std::string("\0\1\1\2", 4));
  return tiff;
}

TiffBuilder JpegDirectory(const std::string& jpeg) {
  return TiffBuilder().Short(259, 6).Rational(282, 72).Rational(283, 72).Short(296, 2).Pieces(513, 514, {jpeg});
}

/// The thumbnail as plain pixels.
TiffBuilder ThumbnailDirectory(const CameraRaw& raw, int width, int height) {
  return PictureDirectory(PaintLandscape(width, height, raw.seed), {.order = raw.order}).Long(254, 1);
}

}  // namespace

std::string RawPreview(const CameraRaw& raw) {
  return EncodeJpeg(PaintLandscape(raw.previewWidth, raw.previewHeight, raw.seed));
}

std::vector<std::uint16_t> SensorData(const CameraRaw& raw) {
  std::array<std::uint16_t, 256> linear{};
  for (std::size_t i = 0; i < linear.size(); ++i) {
    linear[i] = static_cast<std::uint16_t>(4095 * std::pow(static_cast<double>(i) / 255, 2.2));
  }
  const auto picture = PaintLandscape(raw.width, raw.height, raw.seed);
  std::vector<std::uint16_t> out;
  for (int y = 0; y < raw.height; ++y) {
    for (int x = 0; x < raw.width; ++x) {
      const auto at = static_cast<std::size_t>(y * raw.width + x) * 3 + static_cast<std::size_t>(x % 2 + y % 2);
      out.push_back(linear[static_cast<unsigned char>(picture.rgb[at])]);
    }
  }
  return out;
}

TiffBuilder NefDirectories(const CameraRaw& raw) {
  auto tiff = ThumbnailDirectory(raw, 160, 120);
  AddCamera(tiff, raw, "NIKON CORPORATION", "NIKON D100");
  tiff.SubDirectories({JpegDirectory(RawPreview(raw)).Long(254, 1), SensorDirectory(raw, 12, Packed(SensorData(raw)))});
  return tiff.Directory(34665, ExifDirectory(raw));
}

TiffBuilder Eos1DDirectories(const CameraRaw& raw) {
  auto tiff = ThumbnailDirectory(raw, 288, 192);
  AddCamera(tiff, raw, "Canon", "Canon EOS-1D");
  return tiff.Directory(34665, ExifDirectory(raw)).Next(SensorDirectory(raw, 16, InWords(SensorData(raw), raw.order)));
}

TiffBuilder OrfDirectories(const CameraRaw& raw) {
  auto tiff = SensorDirectory(raw, 12, Swapped(Packed(SensorData(raw))));
  AddCamera(tiff, raw, "OLYMPUS OPTICAL CO.,LTD", "C5050Z");
  const auto note = TiffBuilder().Short(0x0201, 3).Pieces(0x0088, 0x0089, {RawPreview(raw)});
  return tiff.Directory(34665, ExifDirectory(raw).Note(kMakerNote, std::string("OLYMP\0\1\0", 8), note))
      .Magic(raw.order == Endian::Big ? 0x4f52 : 0x5352);
}

TiffBuilder PefDirectories(const CameraRaw& raw) {
  auto tiff = SensorDirectory(raw, 12, Packed(SensorData(raw)));
  AddCamera(tiff, raw, "PENTAX Corporation", "PENTAX *ist D");
  return tiff.Directory(34665, ExifDirectory(raw))
      .Next(JpegDirectory(Thumbnail(raw)).Next(JpegDirectory(RawPreview(raw)).Long(254, 1)));
}

TiffBuilder MrwDirectories(const CameraRaw& raw) {
  TiffBuilder tiff(raw.order);
  AddCamera(tiff, raw, "Minolta Co., Ltd.", "DiMAGE A1");
  tiff.Long(256, Number(raw.width)).Long(257, Number(raw.height)).Rational(282, 72).Rational(283, 72).Short(296, 2);
  const auto note = TiffBuilder().Undefined(0, "MLT0").Pieces(0x0088, 0x0089, {RawPreview(raw)});
  return tiff.Directory(34665, ExifDirectory(raw).Note(kMakerNote, "", note));
}

std::string MrwFile(const CameraRaw& raw, const TiffBuilder& tiff) {
  constexpr int kBitsStored = 12, kBitsUsed = 12, kPacked = 0x59, kRedFirst = 1;
  ByteString blocks(Endian::Big);
  blocks.Text(std::string_view("\0PRD", 4)).Long(24).Text("27730001");
  for (int i = 0; i < 2; ++i) blocks.Short(Number(raw.height)).Short(Number(raw.width));
  blocks.Byte(kBitsStored).Byte(kBitsUsed).Byte(kPacked).Byte(0).Short(0).Short(kRedFirst);
  const auto block = tiff.Build();
  blocks.Text(std::string_view("\0TTW", 4)).Long(block.size()).Text(block);
  // Gains of red, green, green and blue in 256ths.
  blocks.Text(std::string_view("\0WBG", 4)).Long(12).Text(std::string_view("\2\2\2\2", 4));
  for (int i = 0; i < 4; ++i) blocks.Short(256);
  ByteString out(Endian::Big);
  out.Text(std::string_view("\0MRM", 4)).Long(blocks.Size()).Text(blocks.Bytes());
  return out.Take() + Packed(SensorData(raw));
}

TiffBuilder RafDirectories(const CameraRaw& raw) {
  TiffBuilder tiff(raw.order);
  AddCamera(tiff, raw, "FUJIFILM", "FinePixS2Pro");
  tiff.Rational(282, 72).Rational(283, 72).Short(296, 2).Short(531, 2);
  return tiff.Directory(34665, ExifDirectory(raw)).Next(JpegDirectory(Thumbnail(raw)));
}

std::string RafFile(const CameraRaw& raw, const TiffBuilder& tiff, std::size_t head) {
  constexpr std::uint32_t kSizeTag = 0x0100;
  const auto jpeg = InsertSegments(RawPreview(raw), ExifSegment(tiff));
  const auto sizes = ByteString(Endian::Big)
                         .Long(1)
                         .Short(kSizeTag)
                         .Short(4)
                         .Short(Number(raw.height))
                         .Short(Number(raw.width))
                         .Take();
  const auto sensor = InWords(SensorData(raw), raw.order);
  ByteString out(Endian::Big);
  out.Text("FUJIFILMCCD-RAW 0100FF155001");
  ByteString name(Endian::Big);
  out.Text(name.Text("FinePixS2Pro").Align(32).Bytes()).Text("0100").Zeros(20);
  std::size_t place = head;
  for (const auto* part : {&jpeg, &sizes, &sensor}) {
    out.Long(place).Long(part->size());
    place += part->size();
  }
  return out.Zeros(head - out.Size()).Text(jpeg).Text(sizes).Text(sensor).Take();
}

std::string MakeThm(const CameraRaw& raw) {
  TiffBuilder tiff(raw.order);
  AddCamera(tiff, raw, "Canon", "Canon PowerShot G2");
  tiff.Rational(282, 180).Rational(283, 180).Short(296, 2).Short(531, 1).Directory(34665, ExifDirectory(raw));
  return InsertSegments(Thumbnail(raw), ExifSegment(tiff));
}

}  // namespace ml::test
