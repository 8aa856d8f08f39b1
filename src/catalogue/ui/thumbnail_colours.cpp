#include "catalogue/ui/thumbnail_colours.h"

#include <algorithm>
#include <array>

#include "platform/paths.h"

namespace ml::catalogue::ui {
namespace {

constexpr QColor Rgb(int red, int green, int blue) { return {red, green, blue}; }

constexpr ThumbnailColours kWhite = {
    .backgroundColour = Rgb(255, 255, 255),
    .selectedFocusColour = Rgb(180, 180, 180),
    .selectedNoFocusColour = Rgb(220, 220, 220),
    .unselectedColour = Rgb(255, 255, 255),
    .frameLightColour = Rgb(210, 210, 210),
    .frameDarkColour = Rgb(0, 0, 0),
    .defaultTextColour = Rgb(0, 0, 0),
    .selectedTextColour = Rgb(200, 80, 80),
    .jpegTextColour = Rgb(0, 0, 200),
    .jpeg2000TextColour = Rgb(0, 0, 0),
    .tiffTextColour = Rgb(0, 0, 0),
    .rawTextColour = Rgb(190, 0, 0),
    .aviTextColour = Rgb(0, 140, 0),
    .nefTextColour = Rgb(0, 0, 0),
    .pngTextColour = Rgb(150, 120, 0),
    .psdTextColour = Rgb(140, 0, 140),
    .tagOutlineColour = Rgb(0, 100, 255),
};

constexpr ThumbnailColours kGrey = {
    .backgroundColour = Rgb(205, 205, 205),
    .selectedFocusColour = Rgb(140, 140, 140),
    .selectedNoFocusColour = Rgb(175, 175, 175),
    .unselectedColour = Rgb(205, 205, 205),
    .frameLightColour = Rgb(255, 255, 255),
    .frameDarkColour = Rgb(0, 0, 0),
    .defaultTextColour = Rgb(0, 0, 0),
    .selectedTextColour = Rgb(200, 200, 200),
    .jpegTextColour = Rgb(0, 0, 200),
    .jpeg2000TextColour = Rgb(0, 0, 0),
    .tiffTextColour = Rgb(0, 0, 0),
    .rawTextColour = Rgb(190, 0, 0),
    .aviTextColour = Rgb(0, 100, 0),
    .nefTextColour = Rgb(0, 0, 0),
    .pngTextColour = Rgb(180, 100, 0),
    .psdTextColour = Rgb(10, 120, 60),
    .tagOutlineColour = Rgb(0, 0, 255),
};

constexpr ThumbnailColours kBlack = {
    .backgroundColour = Rgb(0, 0, 0),
    .selectedFocusColour = Rgb(70, 70, 70),
    .selectedNoFocusColour = Rgb(45, 45, 45),
    .unselectedColour = Rgb(0, 0, 0),
    .frameLightColour = Rgb(140, 140, 140),
    .frameDarkColour = Rgb(60, 60, 60),
    .defaultTextColour = Rgb(160, 160, 0),
    .selectedTextColour = Rgb(200, 200, 200),
    .jpegTextColour = Rgb(0, 200, 240),
    .jpeg2000TextColour = Rgb(160, 160, 0),
    .tiffTextColour = Rgb(160, 160, 0),
    .rawTextColour = Rgb(210, 90, 90),
    .aviTextColour = Rgb(50, 170, 50),
    .nefTextColour = Rgb(160, 160, 0),
    .pngTextColour = Rgb(90, 90, 210),
    .psdTextColour = Rgb(90, 210, 90),
    .tagOutlineColour = Rgb(0, 0, 255),
};

struct SchemeRow {
  std::string_view name;
  const ThumbnailColours* colours;
};
constexpr std::array kSchemes = {SchemeRow{"white", &kWhite}, SchemeRow{"border", &kGrey}, SchemeRow{"grey", &kGrey},
                                 SchemeRow{"gray", &kGrey}};

struct KindRow {
  std::string_view extension;
  ThumbnailKind kind;
};
constexpr ThumbnailKind kJpeg = {"JPEG", &ThumbnailColours::jpegTextColour};
constexpr ThumbnailKind kJpeg2000 = {"JPEG 2000", &ThumbnailColours::jpeg2000TextColour};
constexpr ThumbnailKind kTiff = {"TIFF", &ThumbnailColours::tiffTextColour};
constexpr ThumbnailKind kRaw = {"raw", &ThumbnailColours::rawTextColour};
constexpr std::array kKinds = {
    KindRow{".jpg", kJpeg},
    KindRow{".jpe", kJpeg},
    KindRow{".jpeg", kJpeg},
    KindRow{".jp2", kJpeg2000},
    KindRow{".jpf", kJpeg2000},
    KindRow{".tif", kTiff},
    KindRow{".tiff", kTiff},
    KindRow{".crw", kRaw},
    KindRow{".orf", kRaw},
    KindRow{".raf", kRaw},
    KindRow{".pef", kRaw},
    KindRow{".mrw", kRaw},
    KindRow{".nef", {"raw", &ThumbnailColours::nefTextColour}},
    KindRow{".avi", {"video", &ThumbnailColours::aviTextColour}},
    KindRow{".psd", {"PSD", &ThumbnailColours::psdTextColour}},
    KindRow{".png", {"PNG", &ThumbnailColours::pngTextColour}},
    KindRow{".gif", {"GIF", nullptr}},
    KindRow{".bmp", {"BMP", nullptr}},
};

}  // namespace

const ThumbnailColours& SchemeColours(std::string_view name) {
  const auto row =
      std::ranges::find_if(kSchemes, [&](const auto& r) { return platform::EqualsAsciiFolded(r.name, name); });
  return row == kSchemes.end() ? kBlack : *row->colours;
}

ThumbnailKind KindOfFile(std::string_view path) {
  const auto extension = platform::SplitPath(path).extension;
  const auto row =
      std::ranges::find_if(kKinds, [&](const auto& r) { return platform::EqualsAsciiFolded(r.extension, extension); });
  return row == kKinds.end() ? ThumbnailKind{} : row->kind;
}

}  // namespace ml::catalogue::ui
