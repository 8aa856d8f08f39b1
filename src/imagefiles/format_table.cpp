#include "imagefiles/format_table.h"

#include <algorithm>
#include <string>

#include "imagefiles/messages.h"
#include "platform/paths.h"

namespace ml::imagefiles {
namespace {

constexpr FormatRow kFormats[] = {
    {.format = Format::Jpeg,
     .className = "JpegImageFile",
     .extensions = {".jpg", ".jpe", ".jpeg"},
     .commentHome = CommentHome::Exif,
     .iptcHome = IptcHome::App13,
     .preview = EmbeddedPreview::ExifThumbnail,
     .exifCopyTarget = ExifCopyTarget::Yes,
     .adjustsDateTime = true},
    {.format = Format::Jp2,
     .className = "Jp2ImageFile",
     .extensions = {".jp2", ".jpf"},
     .rotateRefusal = messages::kJp2Rotate,
     .commentHome = CommentHome::IptcCaption,
     .iptcHome = IptcHome::Jp2Uuid},
    {.format = Format::Crw,
     .className = "CrwImageFile",
     .extensions = {".crw"},
     .isRaw = true,
     .commentHome = CommentHome::ExifOfThm,
     .iptcHome = IptcHome::App13OfThm,
     .preview = EmbeddedPreview::Jpeg,
     .exifCopyTarget = ExifCopyTarget::ThroughThm,
     .adjustsDateTime = true,
     .hasThm = true},
    {.format = Format::Tiff,
     .className = "TiffImageFile",
     .extensions = {".tif", ".tiff"},
     .commentHome = CommentHome::Exif,
     .iptcHome = IptcHome::TiffTag,
     .exifCopyTarget = ExifCopyTarget::Yes,
     .adjustsDateTime = true},
    {.format = Format::Eos1DRaw,
     .className = "Eos1DRawImageFile",
     .extensions = {".tif", ".tiff"},
     .isRaw = true,
     .commentHome = CommentHome::Exif,
     .iptcHome = IptcHome::TiffTag,
     .preview = EmbeddedPreview::ViewingJpeg,
     .exifCopyRefusal = messages::kEos1DExifCopy,
     .adjustsDateTime = true},
    {.format = Format::Nef,
     .className = "NefImageFile",
     .extensions = {".nef"},
     .isRaw = true,
     .commentHome = CommentHome::IptcCaption,
     .iptcHome = IptcHome::TiffTag,
     .preview = EmbeddedPreview::Jpeg,
     .adjustsDateTime = true,
     .openByName = false},
    {.format = Format::Avi,
     .className = "AviImageFile",
     .extensions = {".avi"},
     .rotateRefusal = messages::kAviRotate,
     .commentHome = CommentHome::ExifOfThm,
     .iptcHome = IptcHome::App13OfThm,
     .adjustsDateTime = true,
     .hasThm = true,
     .openByName = false},
    {.format = Format::Psd,
     .className = "PsdImageFile",
     .extensions = {".psd"},
     .rotateRefusal = messages::kPsdRotate,
     .commentHome = CommentHome::IptcCaption,
     .iptcHome = IptcHome::PsdResource},
    {.format = Format::Gif,
     .className = "GifImageFile",
     .extensions = {".gif"},
     .rotateRefusal = messages::kGifRotate,
     .commentRefusal = messages::kGifComment},
    {.format = Format::Bmp,
     .className = "BmpImageFile",
     .extensions = {".bmp"},
     .commentRefusal = messages::kBmpComment},
    {.format = Format::Mrw,
     .className = "MrwImageFile",
     .extensions = {".mrw"},
     .rotateRefusal = messages::kMrwRotate,
     .commentRefusal = messages::kMrwComment,
     .adjustsDateTime = true},
    {.format = Format::Orf,
     .className = "OrfImageFile",
     .extensions = {".orf"},
     .commentHome = CommentHome::Exif,
     .preview = EmbeddedPreview::Jpeg,
     .adjustsDateTime = true},
    {.format = Format::Raf,
     .className = "RafImageFile",
     .extensions = {".raf"},
     .commentRefusal = messages::kRafComment,
     .preview = EmbeddedPreview::Jpeg,
     .adjustsDateTime = true},
    {.format = Format::Pef,
     .className = "PefImageFile",
     .extensions = {".pef"},
     .rotateRefusal = messages::kPefRotate,
     .commentRefusal = messages::kPefComment,
     .adjustsDateTime = true},
    {.format = Format::Png,
     .className = "PngImageFile",
     .extensions = {".png"},
     .rotateRefusal = messages::kPngRotate,
     .commentHome = CommentHome::PngText,
     .iptcHome = IptcHome::PngText},
};

/// The three JPEG spellings differ and two raw formats share a rank: custom orders by type depend on it.
struct RankRow {
  std::string_view extension;
  int rank;
};
constexpr RankRow kRanks[] = {
    {".avi", 0},  {".bmp", 1},  {".crw", 2},  {".gif", 3},  {".jpg", 4},  {".jpe", 5},
    {".jpeg", 6}, {".jp2", 7},  {".jpf", 7},  {".mrw", 8},  {".nef", 9},  {".orf", 10},
    {".png", 11}, {".psd", 12}, {".raf", 13}, {".pef", 13}, {".tif", 14}, {".tiff", 14},
};
constexpr int kOtherRank = 12;

}  // namespace

std::span<const FormatRow> Formats() { return kFormats; }

const FormatRow& RowOf(Format format) { return *std::ranges::find(kFormats, format, &FormatRow::format); }

const FormatRow* FindFormat(std::string_view path) {
  const auto parts = platform::SplitPath(path);
  const auto extension = platform::AsciiLower(parts.extension);
  if (extension.size() == 5 && parts.stem.empty()) return nullptr;
  const auto row = std::ranges::find_if(kFormats, [&](const FormatRow& format) {
    return !extension.empty() && std::ranges::find(format.extensions, extension) != format.extensions.end();
  });
  return row == std::end(kFormats) ? nullptr : row;
}

bool IsJpegName(std::string_view path) { return FindFormat(path) == &RowOf(Format::Jpeg); }
bool IsTiffName(std::string_view path) { return FindFormat(path) == &RowOf(Format::Tiff); }

int FileTypeRank(std::string_view path) {
  const auto extension = platform::AsciiLower(platform::SplitPath(path).extension);
  const auto row = std::ranges::find(kRanks, extension, &RankRow::extension);
  return row == std::end(kRanks) ? kOtherRank : row->rank;
}

}  // namespace ml::imagefiles
