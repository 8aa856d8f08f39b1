#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// The boxes of a JPEG 2000 file (ISO/IEC 15444-1, annex I).
namespace ml::metadata {

struct Jp2Box {
  std::string type;      ///< four characters
  FileRange box;         ///< with its header
  FileRange data;        ///< without it
  bool openEnd = false;  ///< the length says "to the end of what holds it"
};

/// Goes through the boxes of `area`, a file or the data of a box; at most 4,096. It ends at a length that does not
/// cover the header. The last box is cut to the area.
class Jp2Boxes {
 public:
  /// Does not own the source.
  Jp2Boxes(const ByteSource& source, const FileRange& area)
      : source_(source), area_(CutToSource(area, source)), position_(area.position) {}
  explicit Jp2Boxes(const ByteSource& source) : Jp2Boxes(source, {0, source.Size()}) {}

  std::optional<Jp2Box> Next();

 private:
  const ByteSource& source_;
  FileRange area_;
  std::uint64_t position_ = 0;
  int count_ = 0;
};

using Jp2Uuid = std::array<std::uint8_t, 16>;
inline constexpr Jp2Uuid kIptcUuid = {0x33, 0xc7, 0xa4, 0xd2, 0xb8, 0x1d, 0x47, 0x23,
                                      0xa0, 0xba, 0xf1, 0xa3, 0xe0, 0x97, 0xad, 0x38};
/// Under which other programs, too, keep EXIF data: "JpgTiffExif->JP2".
inline constexpr Jp2Uuid kExifUuid = {0x4a, 0x70, 0x67, 0x54, 0x69, 0x66, 0x66, 0x45,
                                      0x78, 0x69, 0x66, 0x2d, 0x3e, 0x4a, 0x50, 0x32};

struct Jp2File {
  int width = 0, height = 0;
  int components = 0;
  int bitDepth = 0;           ///< of the first component, 1 to 38
  FileRange iccProfile;       ///< of the first colour box with one; empty if there is none
  FileRange codeStream;       ///< begins with the marker FF4F; the whole of a file that is a bare code stream
  std::vector<Jp2Box> boxes;  ///< those outside of others
  /// The data behind the id of the first UUID box with this id; nothing if there is none.
  std::optional<FileRange> FindUuid(const ByteSource& source, const Jp2Uuid& uuid) const;
};

/// Reads headers only. The size comes from the image header box, without one from the code stream. Nothing if
/// neither gives one. Throws UserError if the file cannot be read.
std::optional<Jp2File> ReadJp2File(const ByteSource& source);

}  // namespace ml::metadata
