#include "metadata/riff.h"

#include <gtest/gtest.h>

#include "memory.h"
#include "support/byte_string.h"

namespace ml::metadata {
namespace {

using test::ByteString;
using test::Endian;

std::string Chunk(std::string_view type, std::string_view data) {
  return ByteString(Endian::Little).Text(type).Long(data.size()).Text(data).Align(2).Take();
}
std::string List(std::string_view type, const std::string& chunks) { return Chunk("LIST", std::string(type) + chunks); }
std::string MovieHeader() {
  return Chunk("avih", ByteString(Endian::Little).Zeros(32).Long(99).Long(77).Zeros(16).Take());
}
std::string Stream(std::string_view kind, std::string_view handler, std::string_view compression,
                   std::uint32_t height) {
  ByteString format(Endian::Little);
  format.Long(40).Long(320).Long(height).Short(1).Short(24).Text(compression).Zeros(20);
  return List("strl", Chunk("strh", std::string(kind) + std::string(handler) + std::string(48, '\0')) +
                          Chunk("strf", format.Bytes()));
}
const std::string kVideo = Stream("vids", "mjpg", "MJPG", 240), kSound = Stream("auds", "    ", "\1\0\1\0", 0);
std::string Avi(const std::string& streams, const std::string& movie) {
  return Chunk("RIFF", "AVI " + List("hdrl", MovieHeader() + streams) + Chunk("JUNK", "odd") + List("movi", movie) +
                           Chunk("idx1", "0123456789abcdef"));
}
AviFile Read(const std::string& bytes) {
  const auto file = ReadAviFile(SourceOf(bytes));
  EXPECT_TRUE(file);
  return file.value_or(AviFile{});
}
std::string FirstFrame(const std::string& bytes) {
  const auto range = Read(bytes).firstFrame;
  return bytes.substr(range.position, range.size);
}

TEST(AviFileTest, FormatOfTheFirstVideoStream) {
  const auto file = Read(Avi(kSound + kVideo + Stream("vids", "xxxx", "YUY2", 10), ""));
  EXPECT_EQ(std::tuple(file.width, file.height, file.streamNumber, file.bitsPerPixel, file.topDown),
            std::tuple(320, 240, 1, 24, false));
  EXPECT_TRUE(file.IsMotionJpeg());
  EXPECT_EQ(file.firstFrame.size, 0U);
}

TEST(AviFileTest, PlainRowsAndOtherCodecs) {
  const auto plain = Read(Avi(Stream("vids", "DIB ", std::string(4, '\0'), 0xffffff10), ""));
  EXPECT_TRUE(plain.IsPlain() && plain.topDown && plain.height == 240);
  const auto lower = Read(Avi(Stream("vids", "\0\0\0\0", "mjpg", 240), ""));
  EXPECT_TRUE(lower.IsMotionJpeg() && !lower.IsPlain());
  const auto other = Read(Avi(Stream("vids", "divx", "DX50", 240), ""));
  EXPECT_FALSE(other.IsMotionJpeg() || other.IsPlain());
}

TEST(AviFileTest, SizeOfTheMovieWithoutAVideoStream) {
  const auto file = Read(Avi(kSound, Chunk("00dc", "frame")));
  EXPECT_EQ(std::tuple(file.width, file.height, file.streamNumber, file.firstFrame.size), std::tuple(99, 77, -1, 0U));
}

TEST(AviFileTest, FirstFrameOfTheStreamThatHoldsSomething) {
  const auto first = Chunk("00wb", "sound") + Chunk("00dc", "wrong stream") + Chunk("01dc", "");
  EXPECT_EQ(FirstFrame(Avi(kSound + kVideo, first + Chunk("01dc", "frame") + Chunk("01dc", "next"))), "frame");
  EXPECT_EQ(FirstFrame(Avi(kSound + kVideo, first + List("rec ", Chunk("00wb", "s") + Chunk("01db", "inner")))),
            "inner");
}

TEST(AviFileTest, LengthsAreCutToWhatHoldsTheChunk) {
  auto bytes = Avi(kVideo, Chunk("00dc", "frame"));
  const auto at = bytes.find("00dc");
  bytes.replace(at + 4, 4, "\xff\xff\xff\xff");
  EXPECT_EQ(FirstFrame(bytes), std::string("frame\0", 6));
  bytes.replace(4, 4, "\xff\xff\xff\xff");
  EXPECT_EQ(Read(bytes).width, 320);
  bytes[8] = 'W';
  EXPECT_FALSE(ReadAviFile(SourceOf(bytes)));
}

}  // namespace
}  // namespace ml::metadata
