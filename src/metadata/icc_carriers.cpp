#include "metadata/icc_carriers.h"

#include "metadata/jp2_boxes.h"
#include "metadata/jpeg_segments.h"
#include "metadata/png_chunks.h"
#include "metadata/psd_resources.h"
#include "metadata/tiff_facts.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kName("ICC_PROFILE\0", 12);
constexpr std::size_t kMaxJoined = 1'048'576;
constexpr std::uint64_t kMaxProfile = std::uint64_t{8} << 20;
constexpr std::size_t kShortestName = 5, kShortestLongName = 6;  ///< with extensions of four and of five bytes

struct Carrier {
  std::string_view extension;
  std::optional<IccProfile> (*read)(const ByteSource&);
};
constexpr Carrier kCarriers[] = {{".jpg", ReadJpegIccProfile},  {".jpe", ReadJpegIccProfile},
                                 {".jpeg", ReadJpegIccProfile}, {".tif", ReadTiffIccProfile},
                                 {".tiff", ReadTiffIccProfile}, {".psd", ReadPsdIccProfile},
                                 {".png", ReadPngIccProfile}};

const Carrier* CarrierOf(const std::string& path) {
  for (const auto& carrier : kCarriers) {
    const auto shortest = carrier.extension.size() == 5 ? kShortestLongName : kShortestName;
    if (path.size() >= shortest && platform::EndsWithNoCase(path, carrier.extension)) return &carrier;
  }
  return nullptr;
}

std::optional<IccProfile> ReadRange(const ByteSource& source, const FileRange& range) {
  if (range.size == 0 || range.size > kMaxProfile) return std::nullopt;
  auto profile = source.ReadUpTo(range.position, static_cast<std::size_t>(range.size));
  return profile.size() < range.size ? std::nullopt : std::optional(std::move(profile));
}

}  // namespace

std::optional<IccProfile> ReadJpegIccProfile(const ByteSource& source) {
  constexpr std::size_t headSize = kName.size() + 2;  // name, number, total
  IccProfile profile;
  unsigned last = 0, total = 0;
  JpegSegments segments(source);
  while (const auto segment = segments.Next()) {
    if (segment->marker != jpeg_marker::kApp2 || !segments.PayloadStartsWith(*segment, kName)) continue;
    const auto bytes = segments.Payload(*segment);
    if (bytes.size() < headSize || segment->cut) return std::nullopt;
    const ByteView head(bytes, ByteOrder::Big);
    const unsigned number = head.readByte(kName.size()), count = head.readByte(kName.size() + 1);
    if (count == 0 || (total != 0 && count != total) || number != last + 1) return std::nullopt;
    if (bytes.size() - headSize > kMaxJoined - profile.size()) return std::nullopt;
    profile.insert(profile.end(), bytes.begin() + headSize, bytes.end());
    total = count;
    last = number;
    if (last == total) return profile;
  }
  return std::nullopt;
}

std::optional<IccProfile> ReadPsdIccProfile(const ByteSource& source) {
  const auto file = ReadPsdFile(source);
  const auto* resource = file ? FindPsdResource(file->resources, psd_resource::kIccProfile) : nullptr;
  return resource == nullptr ? std::nullopt : ReadRange(source, resource->data);
}

std::optional<IccProfile> ReadJp2IccProfile(const ByteSource& source) {
  const auto file = ReadJp2File(source);
  return file ? ReadRange(source, file->iccProfile) : std::nullopt;
}

std::optional<IccProfile> GetIccProfileData(const std::string& path) {
  const auto* carrier = CarrierOf(path);
  if (carrier == nullptr) return std::nullopt;
  try {
    const platform::ReadableFile file(path);
    return carrier->read(FileSource(file));
  } catch (const platform::UserError&) {
    return std::nullopt;  // a file without a profile is the same to whoever asks
  }
}

}  // namespace ml::metadata
