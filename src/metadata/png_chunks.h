#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// What stands in the chunks of a PNG file beside its pixels. Checksums are not looked at.
namespace ml::metadata {

struct PngChunk {
  std::string type;            ///< four letters
  std::uint64_t position = 0;  ///< of its length field in the file
  FileRange data;
  bool cut = false;  ///< the file ends inside the data
};

/// Goes through the chunks from the first, IHDR, to the end of the file; at most 262,144.
class PngChunks {
 public:
  /// Does not own the source.
  explicit PngChunks(const ByteSource& source);
  /// The next chunk; nothing at the end, after IEND, or where the file is no PNG. Throws UserError if the file
  /// cannot be read.
  std::optional<PngChunk> Next();

 private:
  const ByteSource& source_;
  std::uint64_t position_ = 0;
  int count_ = 0;
  bool ended_ = false;
};

/// Longer texts are not read, in bytes.
inline constexpr std::size_t kMaxPngText = std::size_t{1} << 20;

struct PngText {
  std::string key;    ///< 1 to 79 bytes, Latin-1
  std::string value;  ///< as stored: Latin-1, or UTF-8 from an iTXt chunk
};

struct PngInfo {
  int width = 0, height = 0;
  int bitDepth = 0;    ///< of a sample, 1 to 16
  int colourType = 0;  ///< 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGB and alpha
  bool interlaced = false;
  bool hasIccProfile = false;
  FileRange exif;  ///< a TIFF structure; empty if there is none
  /// From tEXt, zTXt and iTXt chunks in file order. A text above 1 MiB or whose compressed form is damaged is
  /// left out, as is whatever comes after 8 MiB in all.
  std::vector<PngText> texts;
  /// The value of the first text with this key, or null.
  const std::string* FindText(std::string_view key) const;
};

/// Nothing if the file does not begin as a PNG with a sound IHDR. Throws UserError if it cannot be read.
std::optional<PngInfo> ReadPngInfo(const ByteSource& source);

/// The unpacked iCCP profile, at most 8 MiB; nothing if there is none or it is damaged.
std::optional<std::vector<std::byte>> ReadPngIccProfile(const ByteSource& source);

}  // namespace ml::metadata
