#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// The chunks of AVI movies.
namespace ml::metadata {

struct RiffChunk {
  std::string type;  ///< four characters
  std::string list;  ///< of a RIFF or LIST chunk the type of its content, else empty
  FileRange data;    ///< cut to what holds the chunk; without the list type
};

/// Goes through the chunks of `area`, a file or the data of a list; at most 65,536.
class RiffChunks {
 public:
  /// Does not own the source.
  RiffChunks(const ByteSource& source, const FileRange& area)
      : source_(source), area_(CutToSource(area, source)), position_(area.position) {}
  explicit RiffChunks(const ByteSource& source) : RiffChunks(source, {0, source.Size()}) {}

  std::optional<RiffChunk> Next();

 private:
  const ByteSource& source_;
  FileRange area_;
  std::uint64_t position_ = 0;
  int count_ = 0;
};

struct AviFile {
  int width = 0, height = 0;  ///< of the video stream, else of the movie
  int streamNumber = -1;      ///< of the first video stream; below 0 if there is none
  std::string handler;        ///< four characters that name the stream's codec, such as "mjpg"
  std::string compression;    ///< those of its format: "MJPG"; four zeros or "DIB " for plain rows
  int bitsPerPixel = 0;
  bool topDown = false;
  FileRange format;      ///< the bitmap header of the stream with its colour table
  FileRange firstFrame;  ///< data of its first chunk that is not empty; empty if there is none

  /// Whether a frame is a JPEG stream, maybe one without Huffman tables.
  bool IsMotionJpeg() const;
  /// Whether a frame is rows of plain pixels.
  bool IsPlain() const;
};

/// Reads headers and chunk heads only. Nothing if the file does not begin as an AVI. Throws UserError if it
/// cannot be read.
std::optional<AviFile> ReadAviFile(const ByteSource& source);

}  // namespace ml::metadata
