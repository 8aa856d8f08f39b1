#include "imaging/tiff/tiff_writer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/byte_string.h"
#include "support/temp_dir.h"

namespace ml::imaging {
namespace {

using test::ByteString;
using test::Endian;

constexpr int kByte = 1, kAscii = 2, kShort = 3, kLong = 4, kRational = 5, kUndefined = 7, kSigned = 10;

std::string Written(const PixelRows& pixels, const MetadataBlocks& blocks, int resolution) {
  const test::TempDir dir;
  WriteTIFF(pixels, blocks, dir / "a.tif", {.resolution = resolution});
  return test::ReadAll(dir / "a.tif").value();
}

std::vector<std::byte> Bytes(const std::string& text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

ByteString& Entry(ByteString& out, int tag, int type, std::uint32_t count, std::uint32_t value) {
  return out.Short(static_cast<unsigned>(tag)).Short(static_cast<unsigned>(type)).Long(count).Long(value);
}

TEST(TiffWriter, PictureWithoutASourceByteForByte) {
  auto pixels = MakePixelBuffer(2, 1, PixelOrder::Bgr, 2);  // written as red, green, blue
  const std::uint16_t samples[] = {3, 0x0201, 1, 6, 5, 0xfffe};
  std::copy_n(std::as_bytes(std::span(samples)).begin(), sizeof samples, pixels.data.begin());

  ByteString file(Endian::Little);
  file.Text("II").Short(42).Long(20);
  for (const auto sample : {1, 0x0201, 3, 0xfffe, 5, 6}) file.Short(static_cast<unsigned>(sample));
  file.Short(15);
  Entry(file, 0xfe, kLong, 1, 0);
  Entry(file, 0x100, kShort, 1, 2);
  Entry(file, 0x101, kShort, 1, 1);
  Entry(file, 0x102, kShort, 3, 206);
  Entry(file, 0x103, kShort, 1, 1);
  Entry(file, 0x106, kShort, 1, 2);
  Entry(file, 0x111, kShort, 1, 8);
  Entry(file, 0x115, kShort, 1, 3);
  Entry(file, 0x116, kShort, 1, 1);
  Entry(file, 0x117, kLong, 1, 12);
  Entry(file, 0x11a, kRational, 1, 212);
  Entry(file, 0x11b, kRational, 1, 220);
  Entry(file, 0x11c, kShort, 1, 1);
  Entry(file, 0x128, kShort, 1, 2);
  Entry(file, 0x83bb, kLong, 2, 228).Long(0);
  file.Short(16).Short(16).Short(16).Long(300).Long(1).Long(300).Long(1);
  file.Text(std::string("\x1c\2\0\0\2\0\2\0", 8));
  EXPECT_EQ(Written(pixels, {}, 300), file.Bytes());
}

metadata::ExifData Shot() {
  metadata::ExifData shot;
  shot.make = "Canon";
  shot.model = "X";
  shot.dateRecorded = true;
  shot.dateTime = "2003.08.09 10:11:12";
  shot.owner = "Me";
  shot.shutterSpeed = "1/250";
  shot.aperture = "2.8";
  shot.exposureMode = "Tv";
  shot.iso = "400";
  shot.exposureCompensation = -1.0 / 3;
  shot.subjectDistance = 1.234;
  shot.meteringMode = "Evaluative";
  shot.whiteBalance = "Fluorescent";
  shot.flash = "On";
  shot.focalLength = 7.3;
  shot.comment = "hill";
  shot.aebCompensation = 0.5;
  shot.contrast = "Low";
  shot.sharpness = "Normal";
  return shot;
}

TEST(TiffWriter, ShootingDataByteForByte) {
  const std::byte grey[] = {std::byte{7}, std::byte{8}};
  PixelRows pixels;
  pixels.width = pixels.channels = 1;
  pixels.height = 2;
  pixels.stride = 1;
  pixels.data = grey;
  const MetadataBlocks blocks{.shooting = Shot(),
                              .makerNote = {.bytes = Bytes(std::string("Nikon\0\2\1", 8))},
                              .iptc = {.items = {{2, 120, "Sky"}}, .surroundings = {}},
                              .icc = Bytes("profile")};

  constexpr unsigned kExif = 10 + 6 + 22 * 12, kData = kExif + 6 + 22 * 12;
  ByteString file(Endian::Little), data(Endian::Little);
  const auto behind = [&](int tag, int type, std::uint32_t count, const std::string& value) {
    Entry(file, tag, type, count, kData + static_cast<unsigned>(data.Size()));
    data.Text(value).Align(2);
  };
  const auto ratio = [&](int tag, int type, unsigned numerator, unsigned denominator) {
    behind(tag, type, 1, ByteString(Endian::Little).Long(numerator).Long(denominator).Bytes());
  };
  const std::string date("2003:08:09 10:11:12\0", 20);
  file.Text("II").Short(42).Long(10).Text("\7\10").Short(22);
  Entry(file, 0xfe, kLong, 1, 0);
  Entry(file, 0x100, kShort, 1, 1);
  Entry(file, 0x101, kShort, 1, 2);
  Entry(file, 0x102, kShort, 1, 8);
  Entry(file, 0x103, kShort, 1, 1);
  Entry(file, 0x106, kShort, 1, 1);
  behind(0x10f, kAscii, 6, std::string("Canon\0", 6));
  Entry(file, 0x110, kAscii, 2, 'X');
  Entry(file, 0x111, kShort, 1, 8);
  Entry(file, 0x115, kShort, 1, 1);
  Entry(file, 0x116, kShort, 1, 2);
  Entry(file, 0x117, kLong, 1, 2);
  ratio(0x11a, kRational, 72, 1);
  ratio(0x11b, kRational, 72, 1);
  Entry(file, 0x11c, kShort, 1, 1);
  Entry(file, 0x128, kShort, 1, 2);
  behind(0x132, kAscii, 20, date);
  Entry(file, 0x13b, kAscii, 3, 'M' | 'e' << 8);
  const std::string datasets("\x1c\2\0\0\2\0\2\x1c\2\x78\0\3Sky", 15);
  behind(0x83bb, kLong, 4, datasets + '\0');
  behind(0x8649, kByte, 28, "8BIM" + std::string("\4\4\0\0\0\0\0\20", 8) + datasets + '\0');
  behind(0x8773, kUndefined, 7, "profile");
  Entry(file, 0x8769, kLong, 1, kExif).Long(0);

  file.Short(22);
  ratio(0x829a, kRational, 1, 250);
  ratio(0x829d, kRational, 280, 100);
  Entry(file, 0x8822, kShort, 1, 3);
  Entry(file, 0x8827, kShort, 1, 400);
  Entry(file, 0x9000, kUndefined, 4, 0x30313230);
  ratio(0x9204, kSigned, 0xffffffff - 999, 3000);
  ratio(0x9206, kRational, 1234, 1000);
  Entry(file, 0x9207, kShort, 1, 5);
  Entry(file, 0x9208, kShort, 1, 0);  // spelt otherwise in the table
  Entry(file, 0x9209, kShort, 1, 1);
  ratio(0x920a, kRational, 73, 10);
  behind(0x927c, kUndefined, 8, std::string("Nikon\0\2\1", 8));
  behind(0x9286, kAscii, 264, std::string("ASCII\0\0\0hill", 12) + std::string(252, ' '));
  behind(0x9003, kAscii, 20, date);
  behind(0x9004, kAscii, 20, date);
  Entry(file, 0xa001, kShort, 1, 0xffff);
  Entry(file, 0xa401, kShort, 1, 0);
  Entry(file, 0xa402, kShort, 1, 2);
  Entry(file, 0xa403, kShort, 1, 1);
  Entry(file, 0xa406, kShort, 1, 0);
  Entry(file, 0xa408, kShort, 1, 1);
  Entry(file, 0xa40a, kShort, 1, 0).Long(0);
  EXPECT_EQ(Written(pixels, blocks, 72), file.Bytes() + data.Bytes());
}

}  // namespace
}  // namespace ml::imaging
