#pragma once

#include <array>
#include <span>
#include <string_view>

/// The list of the image formats: the one place that knows which names are images, and what the program can do with
/// each format. A file's type is told by its extension alone, but for a TIFF that proves to be a raw file.
namespace ml::imagefiles {

enum class Format { Jpeg, Jp2, Crw, Tiff, Eos1DRaw, Nef, Avi, Psd, Gif, Bmp, Mrw, Orf, Raf, Pef, Png };

/// Where a format keeps its comment.
enum class CommentHome { None, Exif, ExifOfThm, IptcCaption, PngText };
/// Where a format keeps its IPTC data.
enum class IptcHome { None, App13, App13OfThm, TiffTag, PsdResource, PngText, Jp2Uuid };
/// What a format holds that may stand for its picture.
enum class EmbeddedPreview { None, ExifThumbnail, Jpeg, ViewingJpeg };
enum class ExifCopyTarget { No, Yes, ThroughThm };

/// One row a format. A refusal is the sentence that its user gets; empty means that the operation is there.
struct FormatRow {
  Format format = Format::Jpeg;
  std::string_view className;
  std::array<std::string_view, 3> extensions;  ///< lower case, with the dot; "" is unused
  bool isRaw = false;                          ///< raw, with a preview inside; other raw formats count as plain images
  std::string_view rotateRefusal = {};
  std::string_view commentRefusal = {};
  CommentHome commentHome = CommentHome::None;
  IptcHome iptcHome = IptcHome::None;
  EmbeddedPreview preview = EmbeddedPreview::None;
  ExifCopyTarget exifCopyTarget = ExifCopyTarget::No;
  std::string_view exifCopyRefusal = {};  ///< of a format that one would expect to be a target
  bool adjustsDateTime = false;           ///< whether there is a recorded date to change; without, nothing happens
  /// Companions by extension that belong to a file of this format, beside ".txt" and ".wav", which may
  /// belong to any.
  bool hasThm = false;
  /// Whether a name given on the command line of the window program is taken.
  bool openByName = true;
};

/// In the order of the extension tests.
std::span<const FormatRow> Formats();
const FormatRow& RowOf(Format format);

/// The row that `path` belongs to by its extension, any case; null if it is no image. An extension of four
/// letters needs a name in front of it: "a.jpeg" is an image, ".jpeg" is not. Never that of EOS-1D raw files,
/// whose names are those of TIFF files.
const FormatRow* FindFormat(std::string_view path);

bool IsJpegName(std::string_view path);
bool IsTiffName(std::string_view path);
/// Sort rank of the extension, 0..14, see the table; unknown extensions rank with ".psd".
int FileTypeRank(std::string_view path);

}  // namespace ml::imagefiles
