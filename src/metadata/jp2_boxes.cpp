#include "metadata/jp2_boxes.h"

#include <limits>

namespace ml::metadata {
namespace {

constexpr int kMaxBoxes = 4096;
constexpr std::uint64_t kHeaderSize = 8, kLongHeaderSize = 16;
constexpr std::uint32_t kToTheEnd = 0, kLongLength = 1;
constexpr std::uint8_t kRestrictedIcc = 2, kAnyIcc = 3;              ///< methods of a colour box that hold a profile
constexpr std::string_view kCodeStreamStart("\xff\x4f\xff\x51", 4);  ///< start of code stream, size segment

int Bounded(std::uint32_t value) {
  return value > static_cast<std::uint32_t>(std::numeric_limits<int>::max()) ? 0 : static_cast<int>(value);
}
/// The high bit tells signed samples, the others the depth less one; 255 stands for "differs".
int DepthOf(std::uint8_t stored) { return stored == 0xff ? 0 : (stored & 0x7f) + 1; }

void ReadImageHeader(const ByteSource& source, const FileRange& data, Jp2File& file) {
  const auto bytes = source.ReadUpTo(data.position, static_cast<std::size_t>(std::min<std::uint64_t>(data.size, 14)));
  const ByteView header(bytes, ByteOrder::Big);
  if (bytes.size() < 11 || file.width != 0) return;
  file.height = Bounded(header.readLong(0));
  file.width = Bounded(header.readLong(4));
  file.components = header.readShort(8);
  file.bitDepth = DepthOf(header.readByte(10));
}

/// The size segment: grid size at 8, offset of the image in it at 16, components at 40, their depths from 42 on.
void ReadSizeSegment(const ByteSource& source, Jp2File& file) {
  const auto bytes = source.ReadUpTo(file.codeStream.position, 43);
  const ByteView segment(bytes, ByteOrder::Big);
  if (bytes.size() < 43 || !segment.StartsWith(kCodeStreamStart)) return;
  const auto side = [&](std::size_t at) {
    const auto end = segment.readLong(at), start = segment.readLong(at + 8);
    return end > start ? Bounded(end - start) : 0;
  };
  file.width = side(8);
  file.height = side(12);
  file.components = segment.readShort(40);
  file.bitDepth = DepthOf(segment.readByte(42));
}

void ReadColour(const ByteSource& source, const FileRange& data, Jp2File& file) {
  constexpr std::uint64_t fields = 3;  // method, precedence, approximation
  if (file.iccProfile.size != 0 || data.size <= fields) return;
  const auto method = source.ReadNumber(data.position, 1, ByteOrder::Big);
  if (method == kRestrictedIcc || method == kAnyIcc) file.iccProfile = {data.position + fields, data.size - fields};
}

void ReadHeaderBox(const ByteSource& source, const FileRange& area, Jp2File& file) {
  Jp2Boxes inner(source, area);
  while (const auto box = inner.Next()) {
    if (box->type == "ihdr") ReadImageHeader(source, box->data, file);
    if (box->type == "colr") ReadColour(source, box->data, file);
  }
}

bool IsBareCodeStream(const ByteSource& source) {
  const auto start = source.ReadUpTo(0, kCodeStreamStart.size());
  return ByteView(start, ByteOrder::Big).StartsWith(kCodeStreamStart);
}

void ReadBoxes(const ByteSource& source, Jp2File& file) {
  Jp2Boxes boxes(source);
  while (auto box = boxes.Next()) {
    if (box->type == "jp2h") ReadHeaderBox(source, box->data, file);
    if (box->type == "jp2c" && file.codeStream.size == 0) file.codeStream = box->data;
    file.boxes.push_back(std::move(*box));
  }
}

}  // namespace

std::optional<Jp2Box> Jp2Boxes::Next() {
  const auto end = area_.End();
  if (count_++ >= kMaxBoxes || position_ >= end || end - position_ < kHeaderSize) return std::nullopt;
  std::array<std::byte, kLongHeaderSize> head{};
  const auto present = source_.ReadSome(position_, head);
  const ByteView view(std::span<const std::byte>(head).first(present), ByteOrder::Big);
  if (present < kHeaderSize) return std::nullopt;
  std::uint64_t size = view.readLong(0), header = kHeaderSize;
  Jp2Box box{.type = std::string(view.Text(4, 4)), .box = {}, .data = {}, .openEnd = size == kToTheEnd};
  if (size == kLongLength) {
    if (present < kLongHeaderSize || end - position_ < kLongHeaderSize) return std::nullopt;
    size = view.readLong64(kHeaderSize);
    header = kLongHeaderSize;
  }
  if (box.openEnd) size = end - position_;
  if (size < header) return std::nullopt;
  size = std::min(size, end - position_);
  box.box = {position_, size};
  box.data = {position_ + header, size - header};
  position_ += size;
  return box;
}

std::optional<FileRange> Jp2File::FindUuid(const ByteSource& source, const Jp2Uuid& uuid) const {
  for (const auto& box : boxes) {
    if (box.type != "uuid" || box.data.size < uuid.size()) continue;
    const auto id = source.ReadUpTo(box.data.position, uuid.size());
    const auto same = [](std::byte stored, std::uint8_t wanted) {
      return std::to_integer<std::uint8_t>(stored) == wanted;
    };
    if (std::ranges::equal(id, uuid, same))
      return FileRange{box.data.position + uuid.size(), box.data.size - uuid.size()};
  }
  return std::nullopt;
}

std::optional<Jp2File> ReadJp2File(const ByteSource& source) {
  Jp2File file;
  try {
    if (IsBareCodeStream(source)) {
      file.codeStream = {0, source.Size()};
    } else {
      ReadBoxes(source, file);
    }
    if (file.width == 0 || file.height == 0) ReadSizeSegment(source, file);
  } catch (ExifException) {
    // what was read before stands
  }
  return file.width == 0 || file.height == 0 ? std::nullopt : std::optional(std::move(file));
}

}  // namespace ml::metadata
