#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"
#include "metadata/jpeg_segments.h"

namespace ml::metadata {

/// What an APP13 segment with image resources begins with.
inline constexpr std::string_view kResourcesMark("Photoshop 3.0\0", 14);

/// Where the IPTC data of a JPEG file stand: in the first APP13 segment, and nowhere else. A long resource may go on in
/// the marked segments right behind it.
struct JpegIptcPlace {
  enum class Kind {
    Resources,  ///< the segment holds image resources, of which there may be none
    Datasets,   ///< it holds the datasets themselves
    Foreign,    ///< it holds something else, in which datasets are searched for all the same
  };
  JpegSegment segment;
  Kind kind = Kind::Resources;
  FileRange area;      ///< of the segment's resources, behind its mark
  FileRange resource;  ///< with head and pad byte, as much as the segment holds; empty if there is none
  FileRange data;      ///< the datasets, as much as the segment holds
  struct Rest {
    JpegSegment segment;
    FileRange data;  ///< the datasets that go on here
    FileRange used;  ///< with the pad byte
  };
  std::vector<Rest> rest;
};

/// Nothing if the file has no APP13 segment. Throws UserError if it cannot be read.
std::optional<JpegIptcPlace> FindJpegIptc(const ByteSource& file);

}  // namespace ml::metadata
