#include "metadata/jp2_boxes.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/byte_string.h"

namespace ml::metadata {
namespace {

using test::ByteString;
using test::Endian;

std::string Box(std::string_view type, std::string_view data) {
  return ByteString(Endian::Big).Long(8 + data.size()).Text(type).Text(data).Take();
}
std::string LongBox(std::string_view type, std::string_view data) {
  return ByteString(Endian::Big).Long(1).Text(type).Number(16 + data.size(), 8).Text(data).Take();
}
std::string OpenBox(std::string_view type, std::string_view data) {
  return ByteString(Endian::Big).Long(0).Text(type).Text(data).Take();
}
std::string Header(std::uint32_t width, std::uint32_t height) {
  return Box("ihdr", ByteString(Endian::Big).Long(height).Long(width).Short(3).Byte(15).Byte(7).Zeros(2).Take());
}
std::string Colour(int method, std::string_view rest) {
  return Box("colr", ByteString(Endian::Big).Byte(static_cast<unsigned>(method)).Zeros(2).Text(rest).Take());
}
/// A size segment of a grid that begins at 100, 50.
std::string CodeStream(std::uint32_t width, std::uint32_t height) {
  ByteString out(Endian::Big);
  out.Short(0xff4f).Short(0xff51).Short(47).Short(0).Long(width + 100).Long(height + 50).Long(100).Long(50);
  return out.Zeros(16).Short(3).Byte(7).Byte(1).Byte(1).Take();
}
const std::string kStart = Box("jP  ", "\r\n\x87\n") + Box("ftyp", "jp2 ");
const std::string kUuid("\x33\xc7\xa4\xd2\xb8\x1d\x47\x23\xa0\xba\xf1\xa3\xe0\x97\xad\x38", 16);

Jp2File Read(const std::string& bytes) {
  const auto file = ReadJp2File(SourceOf(bytes));
  EXPECT_TRUE(file);
  return file.value_or(Jp2File{});
}

TEST(Jp2FileTest, LengthsOfEveryKind) {
  const auto stream = CodeStream(9, 9);
  for (const auto make : {Box, LongBox, OpenBox}) {
    const auto bytes = kStart + LongBox("jp2h", Header(40, 30)) + make("jp2c", stream);
    const auto file = Read(bytes);
    EXPECT_EQ(std::tuple(file.width, file.height, file.components, file.bitDepth), std::tuple(40, 30, 3, 16));
    EXPECT_EQ(bytes.substr(file.codeStream.position, file.codeStream.size), stream);
    ASSERT_EQ(file.boxes.size(), 4U);
    EXPECT_EQ(file.boxes.back().box.End(), bytes.size());
    EXPECT_EQ(file.boxes.back().openEnd, make == OpenBox);
  }
}

TEST(Jp2FileTest, SizeFromTheCodeStream) {
  for (const auto& bytes : {CodeStream(40, 30), kStart + Box("jp2c", CodeStream(40, 30)),
                            kStart + Box("jp2h", Header(0, 0)) + Box("jp2c", CodeStream(40, 30))}) {
    const auto file = Read(bytes);
    EXPECT_EQ(std::tuple(file.width, file.height, file.components, file.bitDepth), std::tuple(40, 30, 3, 8));
  }
}

TEST(Jp2FileTest, FilesWithoutASizeAreRefused) {
  const std::string noSize[] = {"",
                                kStart,
                                "no boxes at all, but long enough",
                                kStart + Box("jp2h", Header(0, 5)),
                                kStart + Box("jp2h", Header(0x80000000, 5)),
                                kStart + Box("jp2h", ByteString(Endian::Big).Long(4).Text(Header(4, 4)).Take())};
  for (const auto& bytes : noSize) EXPECT_FALSE(ReadJp2File(SourceOf(bytes))) << bytes;
}

TEST(Jp2FileTest, FirstColourBoxWithAProfile) {
  const auto header = Box("jp2h", Header(4, 4) + Colour(1, "\0\0\0\x10") + Colour(2, "profile") + Colour(2, "second"));
  const auto bytes = kStart + header;
  const auto range = Read(bytes).iccProfile;
  EXPECT_EQ(bytes.substr(range.position, range.size), "profile");
  EXPECT_EQ(Read(kStart + Box("jp2h", Header(4, 4) + Colour(1, "\0\0\0\x10"))).iccProfile.size, 0U);
}

TEST(Jp2FileTest, UuidBoxesBeforeAndBehindTheCodeStream) {
  const auto other = Box("uuid", std::string(16, 'x') + "other"), ours = Box("uuid", kUuid + "iptc");
  const auto head = kStart + Box("jp2h", Header(4, 4)), stream = Box("jp2c", CodeStream(4, 4));
  for (const auto& bytes : {head + other + ours + stream, head + stream + Box("uuid", "short") + ours}) {
    const auto source = SourceOf(bytes);
    const auto range = Read(bytes).FindUuid(source, kIptcUuid);
    ASSERT_TRUE(range);
    EXPECT_EQ(bytes.substr(range->position, range->size), "iptc");
  }
  const auto none = head + other;
  EXPECT_FALSE(Read(none).FindUuid(SourceOf(none), kIptcUuid));
}

TEST(Jp2FileTest, LyingLengthsEndTheWalk) {
  const auto head = kStart + Box("jp2h", Header(4, 4));
  ByteString huge(Endian::Big), tiny(Endian::Big), half(Endian::Big);
  huge.Long(1).Text("jp2c").Number(~std::uint64_t{0}, 8).Text("rest");
  tiny.Long(1).Text("jp2c").Number(15, 8).Text("rest");
  half.Long(7).Text("jp2c");
  EXPECT_EQ(Read(head + huge.Bytes()).codeStream.size, 4U);
  EXPECT_EQ(Read(head + tiny.Bytes()).boxes.size(), 3U);
  EXPECT_EQ(Read(head + half.Bytes()).boxes.size(), 3U);
}

}  // namespace
}  // namespace ml::metadata
