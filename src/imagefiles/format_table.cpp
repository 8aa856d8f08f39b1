#include "imagefiles/format_table.h"

#include <algorithm>
#include <string>

#include "platform/paths.h"

namespace ml::imagefiles {
namespace {

constexpr FormatRow kFormats[] = {
    {.className = "JpegImageFile", .extensions = {".jpg", ".jpe", ".jpeg"}},
    {.className = "Jp2ImageFile", .extensions = {".jp2", ".jpf"}},
    {.className = "CrwImageFile", .extensions = {".crw"}, .hasThm = true},
    {.className = "TiffImageFile", .extensions = {".tif", ".tiff"}},
    {.className = "NefImageFile", .extensions = {".nef"}, .openByName = false},
    {.className = "AviImageFile", .extensions = {".avi"}, .hasThm = true, .openByName = false},
    {.className = "PsdImageFile", .extensions = {".psd"}},
    {.className = "GifImageFile", .extensions = {".gif"}},
    {.className = "BmpImageFile", .extensions = {".bmp"}},
    {.className = "MrwImageFile", .extensions = {".mrw"}},
    {.className = "OrfImageFile", .extensions = {".orf"}},
    {.className = "RafImageFile", .extensions = {".raf"}},
    {.className = "PefImageFile", .extensions = {".pef"}},
    {.className = "PngImageFile", .extensions = {".png"}},
};
constexpr const FormatRow& kJpeg = kFormats[0];
constexpr const FormatRow& kTiff = kFormats[3];

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

const FormatRow* FindFormat(std::string_view path) {
  const auto parts = platform::SplitPath(path);
  const auto extension = platform::AsciiLower(parts.extension);
  if (extension.size() == 5 && parts.stem.empty()) return nullptr;
  const auto row = std::ranges::find_if(kFormats, [&](const FormatRow& format) {
    return !extension.empty() && std::ranges::find(format.extensions, extension) != format.extensions.end();
  });
  return row == std::end(kFormats) ? nullptr : row;
}

bool IsJpegName(std::string_view path) { return FindFormat(path) == &kJpeg; }
bool IsTiffName(std::string_view path) { return FindFormat(path) == &kTiff; }

int FileTypeRank(std::string_view path) {
  const auto extension = platform::AsciiLower(platform::SplitPath(path).extension);
  const auto row = std::ranges::find(kRanks, extension, &RankRow::extension);
  return row == std::end(kRanks) ? kOtherRank : row->rank;
}

}  // namespace ml::imagefiles
