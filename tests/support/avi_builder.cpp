#include "support/avi_builder.h"

#include "support/bmp_builder.h"
#include "support/byte_string.h"

namespace ml::test {
namespace {

constexpr std::uint64_t kFramesASecond = 15, kSamplesASecond = 11025;

std::string Chunk(std::string_view name, std::string_view data) {
  return ByteString(Endian::Little).Text(name).Long(data.size()).Text(data).Align(2).Take();
}
std::string List(std::string_view name, const std::string& chunks) { return Chunk("LIST", std::string(name) + chunks); }

bool IsJpeg(AviFrames frames) { return frames == AviFrames::MotionJpeg || frames == AviFrames::MotionJpegWithTables; }

std::string Codec(AviFrames frames) {
  return IsJpeg(frames) ? "MJPG" : frames == AviFrames::Dib ? std::string(4, '\0') : "xxxx";
}

std::string Frame(const Picture& picture, AviFrames frames) {
  if (!IsJpeg(frames)) return DibRows(picture);
  const auto jpeg = EncodeJpeg(picture);
  return frames == AviFrames::MotionJpeg ? WithoutHuffmanTables(jpeg) : jpeg;
}

std::string StreamHeader(std::string_view type, std::string_view handler, std::uint64_t rate, std::uint64_t length,
                         std::uint64_t sampleSize) {
  ByteString out(Endian::Little);
  out.Text(type).Text(handler).Long(0).Long(0).Long(0).Long(1).Long(rate).Long(0).Long(length);
  return Chunk("strh", out.Long(0).Long(0xffffffff).Long(sampleSize).Zeros(8).Bytes());
}

std::string VideoStream(const std::vector<Picture>& pictures, const AviEncoding& encoding) {
  auto format = DibHeader(pictures[0]);
  format.replace(16, 4, Codec(encoding.frames));
  const auto handler = encoding.frames == AviFrames::Dib ? "DIB " : Codec(encoding.frames);
  return List("strl", StreamHeader("vids", handler, kFramesASecond, pictures.size(), 0) + Chunk("strf", format));
}

std::string SoundStream(std::size_t frames) {
  const auto length = frames * kSamplesASecond / kFramesASecond;
  ByteString format(Endian::Little);
  format.Short(1).Short(1).Long(kSamplesASecond).Long(kSamplesASecond).Short(1).Short(8);
  return List("strl",
              StreamHeader("auds", std::string(4, '\0'), kSamplesASecond, length, 1) + Chunk("strf", format.Bytes()));
}

std::string MainHeader(const std::vector<Picture>& pictures, const AviEncoding& encoding) {
  constexpr std::uint64_t kHasIndex = 0x10;
  ByteString out(Endian::Little);
  out.Long(1'000'000 / kFramesASecond).Long(0).Long(0).Long(kHasIndex).Long(pictures.size()).Long(0);
  out.Long(encoding.sound ? 2 : 1).Long(0).Long(static_cast<std::uint64_t>(pictures[0].width));
  return Chunk("avih", out.Long(static_cast<std::uint64_t>(pictures[0].height)).Zeros(16).Bytes());
}

}  // namespace

std::string WithoutHuffmanTables(const std::string& jpeg) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(jpeg.at(at)); };
  std::string out = jpeg.substr(0, 2);
  std::size_t at = 2;
  while (byte(at + 1) != 0xda) {
    const std::size_t size = 2U + byte(at + 2) * 256U + byte(at + 3);
    if (byte(at + 1) != 0xc4) out.append(jpeg, at, size);
    at += size;
  }
  return out.append(jpeg, at);
}

std::string EncodeAvi(const std::vector<Picture>& pictures, const AviEncoding& encoding) {
  constexpr std::uint64_t kKeyFrame = 0x10;
  std::string header = MainHeader(pictures, encoding) + VideoStream(pictures, encoding);
  if (encoding.sound) header += SoundStream(pictures.size());
  if (!encoding.date.empty()) header += Chunk("IDIT", encoding.date + "\n" + '\0');
  std::string movie;
  ByteString index(Endian::Little);
  const auto add = [&](std::string_view name, const std::string& data) {
    // Offsets count from the name of the list.
    index.Text(name).Long(kKeyFrame).Long(movie.size() + 4).Long(data.size());
    movie += Chunk(name, data);
  };
  for (const auto& picture : pictures) {
    if (encoding.sound) add("01wb", std::string(kSamplesASecond / kFramesASecond, '\x80'));
    add(encoding.frames == AviFrames::Dib ? "00db" : "00dc", Frame(picture, encoding.frames));
  }
  return Chunk("RIFF", "AVI " + List("hdrl", header) + List("movi", movie) + Chunk("idx1", index.Bytes()));
}

}  // namespace ml::test
