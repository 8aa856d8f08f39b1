#include "metadata/psd_resources.h"

#include <limits>

namespace ml::metadata {
namespace {

constexpr std::size_t kHeaderSize = 26;
constexpr std::uint16_t kVersion = 1, kLargeVersion = 2;
constexpr std::size_t kMaxResources = 4096;
constexpr std::string_view kSignature = "8BIM";

std::uint64_t Even(std::uint64_t size) { return size + (size & 1); }

/// Throws OutOfBounds at the end of the source.
std::optional<PsdResource> ReadResource(const ByteSource& source, std::uint64_t position) {
  const auto head = source.Read(position, 7);  // signature, id, length of the name
  const ByteView view(head, ByteOrder::Big);
  if (!view.StartsWith(kSignature)) return std::nullopt;
  const auto sizeField = position + 6 + Even(1U + view.readByte(6));
  const std::uint64_t size = source.ReadNumber(sizeField, 4, ByteOrder::Big);
  return PsdResource{view.readShort(4), position, {sizeField + 4, size}};
}

/// A section is a length, of eight bytes if it is wide, and as many bytes. Throws OutOfBounds if it is not wholly
/// there.
FileRange ReadSection(const ByteSource& source, std::uint64_t position, bool wide = false) {
  std::uint64_t length = source.ReadNumber(position, 4, ByteOrder::Big);
  if (wide) length = length << 32 | source.ReadNumber(position + 4, 4, ByteOrder::Big);
  const FileRange section{position + (wide ? 8 : 4), length};
  if (length > source.Size() || section.End() > source.Size()) throw ExifException::OutOfBounds;  // a sum could wrap
  return section;
}

bool IsOneOf(PsdVersions versions, std::uint16_t version) {
  return version == kVersion || (version == kLargeVersion && versions == PsdVersions::WithLarge);
}

std::optional<PsdFile> ReadHeader(const ByteSource& source, PsdVersions versions) {
  const auto bytes = source.ReadUpTo(0, kHeaderSize);
  const ByteView header(bytes, ByteOrder::Big);
  if (bytes.size() < kHeaderSize || !header.StartsWith("8BPS")) return std::nullopt;
  const auto version = header.readShort(4);
  if (!IsOneOf(versions, version)) return std::nullopt;
  constexpr std::uint32_t most = std::numeric_limits<int>::max();
  const auto height = header.readLong(14), width = header.readLong(18);
  if (height > most || width > most) return std::nullopt;
  PsdFile file;
  file.large = version == kLargeVersion;
  file.channels = header.readShort(12);
  file.height = static_cast<int>(height);
  file.width = static_cast<int>(width);
  file.depth = header.readShort(22);
  file.mode = static_cast<PsdMode>(header.readShort(24));
  return file;
}

}  // namespace

std::vector<PsdResource> ReadPsdResources(const ByteSource& source, const FileRange& area, CutResource cut) {
  std::vector<PsdResource> resources;
  auto position = area.position;
  try {
    while (position < area.End() && resources.size() < kMaxResources) {
      auto resource = ReadResource(source, position);
      if (!resource || resource->data.position > area.End()) break;
      const auto room = area.End() - resource->data.position;
      if (resource->data.size > room && cut == CutResource::Drop) break;
      resource->data.size = std::min(resource->data.size, room);
      resources.push_back(*resource);
      position = resource->data.position + Even(resource->data.size);
    }
  } catch (ExifException) {
    return resources;
  }
  return resources;
}

const PsdResource* FindPsdResource(const std::vector<PsdResource>& resources, std::uint16_t id) {
  const auto found = std::ranges::find(resources, id, &PsdResource::id);
  return found == resources.end() ? nullptr : &*found;
}

std::optional<PsdFile> ReadPsdFile(const ByteSource& source, PsdVersions versions) {
  auto file = ReadHeader(source, versions);
  if (!file) return std::nullopt;
  try {
    file->colourTable = ReadSection(source, kHeaderSize);
    // Resources in front of a cut are of use, so the area may end behind the file.
    const auto lengthField = file->colourTable.End();
    const FileRange area{lengthField + 4, source.ReadNumber(lengthField, 4, ByteOrder::Big)};
    file->resourceArea = CutToSource(area, source);
    file->resources = ReadPsdResources(source, file->resourceArea);
    const auto layers = ReadSection(source, area.End(), file->large);
    if (layers.End() < source.Size()) file->mergedImage = layers.End();
  } catch (ExifException) {
    return file;
  }
  return file;
}

}  // namespace ml::metadata
