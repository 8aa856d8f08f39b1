#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// Image resources: small blocks of metadata with an id each, in PSD files and in APP13 segments.
namespace ml::metadata {

namespace psd_resource {
inline constexpr std::uint16_t kIptc = 1028, kIccProfile = 1039, kExif = 1058, kXmp = 1060;
}

struct PsdResource {
  std::uint16_t id = 0;
  std::uint64_t position = 0;  ///< of the signature, where the block begins
  FileRange data;              ///< without the pad byte of an odd length
  bool operator==(const PsdResource&) const = default;
};

enum class CutResource { Drop, Keep };

/// The blocks from `area`'s start on, at most 4,096: each begins with "8BIM"; the walk ends at whatever does not
/// and at a block that does not lie in `area` wholly, but for its pad byte, or with the part of it that does.
std::vector<PsdResource> ReadPsdResources(const ByteSource& source, const FileRange& area,
                                          CutResource cut = CutResource::Drop);
/// The first with this id, or null.
const PsdResource* FindPsdResource(const std::vector<PsdResource>& resources, std::uint16_t id);

enum class PsdMode : std::uint16_t {
  Bitmap = 0,
  Grey = 1,
  Indexed = 2,
  Rgb = 3,
  Cmyk = 4,
  Multichannel = 7,
  Duotone = 8,
  Lab = 9
};

struct PsdFile {
  bool large = false;  ///< version 2: the lengths of layers and of packed rows have twice as many bytes
  int width = 0, height = 0;
  int channels = 0;
  int depth = 0;                ///< bits of a sample: 1, 8, 16 or 32
  PsdMode mode = PsdMode::Rgb;  ///< or whatever number the file says
  FileRange colourTable;        ///< of an indexed image: 256 red, 256 green, 256 blue values
  FileRange resourceArea;
  std::vector<PsdResource> resources;
  std::uint64_t mergedImage = 0;  ///< position of the merged image, which begins with two bytes of compression;
                                  ///< 0 if the file ends before
};

enum class PsdVersions { First, WithLarge };
/// Nothing if the file does not begin as a PSD of these versions; sections behind a damage stay empty. Throws UserError
/// if it cannot be read.
std::optional<PsdFile> ReadPsdFile(const ByteSource& source, PsdVersions versions = PsdVersions::First);

}  // namespace ml::metadata
