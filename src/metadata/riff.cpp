#include "metadata/riff.h"

#include <limits>

#include "metadata/bmp_size.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr int kMaxChunks = 65'536;
constexpr int kMaxStreams = 64;
constexpr int kMaxRecords = 64;                ///< in front of the first frame; writers put it into the first
constexpr std::size_t kMovieHeaderSize = 40;   ///< of "avih" as far as the height
constexpr std::size_t kStreamHeaderSize = 8;   ///< of "strh" as far as the handler
constexpr std::size_t kBitmapHeaderSize = 20;  ///< of "strf" as far as the compression

std::vector<std::byte> ReadStart(const ByteSource& source, const FileRange& range, std::size_t length) {
  return source.ReadUpTo(range.position, static_cast<std::size_t>(std::min<std::uint64_t>(range.size, length)));
}

int SideOf(std::uint32_t value) {
  return value > static_cast<std::uint32_t>(std::numeric_limits<int>::max()) ? 0 : static_cast<int>(value);
}

void ReadMovieHeader(const ByteSource& source, const FileRange& data, AviFile& avi) {
  const auto bytes = ReadStart(source, data, kMovieHeaderSize);
  const ByteView header(bytes, ByteOrder::Little);
  if (bytes.size() < kMovieHeaderSize || avi.width != 0) return;
  avi.width = SideOf(header.readLong(32));
  avi.height = SideOf(header.readLong(36));
}

void ReadFormat(const ByteSource& source, const FileRange& data, AviFile& avi) {
  const auto bytes = ReadStart(source, data, kBitmapHeaderSize);
  const ByteView header(bytes, ByteOrder::Little);
  const auto size = bytes.size() < kBitmapHeaderSize ? std::nullopt : ReadDibSize(header);
  if (!size) return;
  avi.width = size->width;
  avi.height = size->height;
  avi.bitsPerPixel = size->bitsPerPixel;
  avi.topDown = size->topDown;
  avi.compression = header.Text(16, 4);
  avi.format = data;
}

/// A stream list: its header, then its format.
void ReadStream(const ByteSource& source, const FileRange& list, int number, AviFile& avi) {
  RiffChunks chunks(source, list);
  while (const auto chunk = chunks.Next()) {
    if (chunk->type == "strh") {
      const auto bytes = ReadStart(source, chunk->data, kStreamHeaderSize);
      const ByteView header(bytes, ByteOrder::Little);
      if (bytes.size() < kStreamHeaderSize || !header.StartsWith("vids")) return;
      avi.streamNumber = number;
      avi.handler = header.Text(4, 4);
    }
    if (chunk->type == "strf" && avi.streamNumber == number) ReadFormat(source, chunk->data, avi);
  }
}

void ReadHeaderList(const ByteSource& source, const FileRange& list, AviFile& avi) {
  RiffChunks chunks(source, list);
  int stream = 0;
  while (const auto chunk = chunks.Next()) {
    if (chunk->type == "avih") ReadMovieHeader(source, chunk->data, avi);
    if (chunk->list == "strl" && avi.streamNumber < 0 && stream < kMaxStreams) {
      ReadStream(source, chunk->data, stream++, avi);
    }
  }
}

/// Frames are called "00db" or "00dc" after the number of their stream.
bool IsFrame(const RiffChunk& chunk, int stream) {
  const std::string digits{static_cast<char>('0' + stream / 10), static_cast<char>('0' + stream % 10)};
  return chunk.data.size != 0 && (chunk.type == digits + "dc" || chunk.type == digits + "db");
}

/// Frames stand in the list or in records of it.
FileRange FindFrame(const ByteSource& source, const FileRange& list, int stream) {
  RiffChunks chunks(source, list);
  int records = 0;
  while (const auto chunk = chunks.Next()) {
    if (IsFrame(*chunk, stream)) return chunk->data;
    if (chunk->list != "rec " || records++ >= kMaxRecords) continue;
    RiffChunks record(source, chunk->data);
    while (const auto inner = record.Next()) {
      if (IsFrame(*inner, stream)) return inner->data;
    }
  }
  return {};
}

}  // namespace

std::optional<RiffChunk> RiffChunks::Next() {
  constexpr std::uint64_t headSize = 8, listType = 4;
  const auto end = area_.End();
  if (count_++ >= kMaxChunks || position_ >= end || end - position_ < headSize) return std::nullopt;
  std::array<std::byte, headSize + listType> head{};
  const auto present = source_.ReadSome(position_, head);
  if (present < headSize) return std::nullopt;
  const ByteView view(std::span<const std::byte>(head).first(present), ByteOrder::Little);
  const std::uint64_t declared = view.readLong(4), rest = end - position_ - headSize;
  RiffChunk chunk{
      .type = std::string(view.Text(0, 4)), .list = {}, .data = {position_ + headSize, std::min(declared, rest)}};
  if ((chunk.type == "RIFF" || chunk.type == "LIST") && chunk.data.size >= listType && present == head.size()) {
    chunk.list = view.Text(headSize, listType);
    chunk.data = {chunk.data.position + listType, chunk.data.size - listType};
  }
  position_ = chunk.data.End() + (declared & 1);
  return chunk;
}

bool AviFile::IsMotionJpeg() const {
  return platform::EqualsAsciiFolded(compression, "MJPG") || platform::EqualsAsciiFolded(handler, "mjpg");
}

bool AviFile::IsPlain() const {
  return !IsMotionJpeg() && (compression == std::string_view("\0\0\0\0", 4) || compression == "DIB ");
}

std::optional<AviFile> ReadAviFile(const ByteSource& source) {
  const auto riff = RiffChunks(source).Next();
  if (!riff || riff->type != "RIFF" || riff->list != "AVI ") return std::nullopt;
  AviFile avi;
  RiffChunks chunks(source, riff->data);
  bool hasHeaders = false;
  while (const auto chunk = chunks.Next()) {
    if (chunk->list == "hdrl" && !hasHeaders) {
      ReadHeaderList(source, chunk->data, avi);
      hasHeaders = true;
    }
    if (chunk->list == "movi") {
      if (avi.streamNumber >= 0) avi.firstFrame = FindFrame(source, chunk->data, avi.streamNumber);
      break;
    }
  }
  return avi;
}

}  // namespace ml::metadata
