#include "metadata/png_chunks.h"

#include "metadata/inflate.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";
constexpr int kMaxChunks = 262'144;
constexpr std::uint32_t kMaxChunkSize = 0x7fffffff;
constexpr std::uint32_t kHeaderSize = 13;
constexpr std::size_t kMaxKey = 79;
constexpr std::size_t kMaxAllTexts = std::size_t{8} << 20;
constexpr std::size_t kMaxTexts = 4096;
constexpr int kMaxBadTexts = 16;  ///< each may cost as much time as a text of full length
constexpr std::size_t kMaxProfile = std::size_t{8} << 20;

/// The zero-terminated text at the front of `data`; `data` then begins behind it. Throws OutOfBounds if there is
/// no terminator.
std::string TakeText(ByteView& data) {
  const auto all = data.Text();
  const auto end = all.find('\0');
  if (end == std::string_view::npos) throw ExifException::OutOfBounds;
  std::string text(all.substr(0, end));
  data = data.From(end + 1);
  return text;
}

std::string Unpacked(ByteView stream) {
  const auto content = Inflate(stream.Bytes(), kMaxPngText);
  if (!content) throw ExifException::BadHeader;
  return std::string(platform::AsText(*content));
}

/// The body of a chunk behind its key. Method 0, zlib, is the only one there is.
std::string TextBody(std::string_view type, ByteView data) {
  if (type == "tEXt") return std::string(data.Text());
  if (type == "zTXt") {
    if (data.readByte(0) != 0) throw ExifException::BadHeader;
    return Unpacked(data.From(1));
  }
  const bool packed = data.readByte(0) != 0;
  if (packed && data.readByte(1) != 0) throw ExifException::BadHeader;
  data = data.From(2);
  TakeText(data);  // language
  TakeText(data);  // translated key
  return packed ? Unpacked(data) : std::string(data.Text());
}

std::optional<PngText> ReadText(const ByteSource& source, const PngChunk& chunk) {
  if (chunk.data.size > kMaxPngText || chunk.cut) return std::nullopt;
  try {
    const auto bytes = source.Read(chunk.data.position, static_cast<std::size_t>(chunk.data.size));
    ByteView data(bytes, ByteOrder::Big);
    PngText text{.key = TakeText(data), .value = {}};
    if (text.key.empty() || text.key.size() > kMaxKey) return std::nullopt;
    text.value = TextBody(chunk.type, data);
    return text;
  } catch (ExifException) {
    return std::nullopt;
  }
}

std::optional<PngInfo> ReadHeader(const ByteSource& source, const PngChunk& chunk) {
  if (chunk.type != "IHDR" || chunk.data.size < kHeaderSize) return std::nullopt;
  const auto bytes = source.ReadUpTo(chunk.data.position, kHeaderSize);
  if (bytes.size() < kHeaderSize) return std::nullopt;
  const ByteView header(bytes, ByteOrder::Big);
  const auto width = header.readLong(0), height = header.readLong(4);
  if (width == 0 || height == 0 || width > kMaxChunkSize || height > kMaxChunkSize) return std::nullopt;
  PngInfo info;
  info.width = static_cast<int>(width);
  info.height = static_cast<int>(height);
  info.bitDepth = header.readByte(8);
  info.colourType = header.readByte(9);
  info.interlaced = header.readByte(12) != 0;
  return info;
}

bool IsText(std::string_view type) { return type == "tEXt" || type == "zTXt" || type == "iTXt"; }

}  // namespace

PngChunks::PngChunks(const ByteSource& source) : source_(source), position_(kSignature.size()) {
  const auto start = source.ReadUpTo(0, kSignature.size());
  ended_ = !ByteView(start, ByteOrder::Big).StartsWith(kSignature);
}

std::optional<PngChunk> PngChunks::Next() {
  if (ended_ || count_++ >= kMaxChunks) return std::nullopt;
  std::array<std::byte, 8> head{};
  ended_ = source_.ReadSome(position_, head) != head.size();
  if (ended_) return std::nullopt;
  const ByteView view(head, ByteOrder::Big);
  const auto size = view.readLong(0);
  PngChunk chunk{.type = std::string(view.Text(4, 4)), .position = position_, .data = {position_ + 8, size}};
  ended_ = size > kMaxChunkSize;
  if (ended_) return std::nullopt;
  chunk.data = CutToSource(chunk.data, source_);
  chunk.cut = chunk.data.size < size;
  ended_ = chunk.cut || chunk.type == "IEND";
  position_ = chunk.data.End() + 4;  // the checksum
  return chunk;
}

const std::string* PngInfo::FindText(std::string_view key) const {
  const auto found = std::ranges::find(texts, key, &PngText::key);
  return found == texts.end() ? nullptr : &found->value;
}

std::optional<PngInfo> ReadPngInfo(const ByteSource& source) {
  PngChunks chunks(source);
  auto chunk = chunks.Next();
  if (!chunk) return std::nullopt;
  auto info = ReadHeader(source, *chunk);
  if (!info) return std::nullopt;
  std::size_t total = 0;
  int bad = 0;
  while ((chunk = chunks.Next())) {
    if (chunk->type == "iCCP") info->hasIccProfile = true;
    if (chunk->type == "eXIf" && info->exif.size == 0) info->exif = chunk->data;
    const bool full = total >= kMaxAllTexts || info->texts.size() >= kMaxTexts || bad > kMaxBadTexts;
    if (full || !IsText(chunk->type)) continue;
    auto text = ReadText(source, *chunk);
    if (!text) {
      ++bad;
      continue;
    }
    total += text->value.size();
    if (total <= kMaxAllTexts) info->texts.push_back(std::move(*text));
  }
  return info;
}

std::optional<std::vector<std::byte>> ReadPngIccProfile(const ByteSource& source) {
  PngChunks chunks(source);
  while (const auto chunk = chunks.Next()) {
    if (chunk->type == "IDAT") return std::nullopt;  // a profile stands before the pixels
    if (chunk->type != "iCCP" || chunk->cut || chunk->data.size > kMaxProfile) continue;
    try {
      const auto bytes = source.Read(chunk->data.position, static_cast<std::size_t>(chunk->data.size));
      ByteView data(bytes, ByteOrder::Big);
      TakeText(data);  // its name
      if (data.readByte(0) != 0) return std::nullopt;
      return Inflate(data.From(1).Bytes(), kMaxProfile);
    } catch (ExifException) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

}  // namespace ml::metadata
