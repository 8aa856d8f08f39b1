#include "support/demo_files.h"

#include <cstdio>

#include "support/avi_builder.h"
#include "support/bmp_builder.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/gif_builder.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"

namespace ml::test {
namespace {

/// "DSC_0031.NEF" of "DSC_", 31, "NEF".
std::string Name(const char* prefix, int number, const char* extension) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "%04d", number);
  return prefix + std::string(digits) + "." + extension;
}

struct RawKind {
  const char *prefix, *extension;
  int orientation;
  std::string (*make)(const CameraRaw&);
  bool thm = false;
};
const RawKind kRaws[] = {
    {"CRW_", "CRW", 1, [](const CameraRaw& raw) { return CrwHeap(raw).BuildFile(Endian::Little); }, true},
    {"CRW_", "CRW", 8, [](const CameraRaw& raw) { return CrwHeap(raw).BuildFile(Endian::Little); }, true},
    {"DSC_", "NEF", 1, [](const CameraRaw& raw) { return NefDirectories(raw).Build(); }},
    {"DSC_", "NEF", 6, [](const CameraRaw& raw) { return NefDirectories(raw).Build(); }},
    {"DSCF", "RAF", 1, [](const CameraRaw& raw) { return RafFile(raw, RafDirectories(raw)); }},
    {"P101", "ORF", 1, [](const CameraRaw& raw) { return OrfDirectories(raw).Build(); }},
    {"PICT", "MRW", 1, [](const CameraRaw& raw) { return MrwFile(raw, MrwDirectories(raw)); }},
    {"IMGP", "PEF", 1, [](const CameraRaw& raw) { return PefDirectories(raw).Build(); }},
};

std::string Movie(int seed) {
  constexpr int kWidth = 320, kHeight = 240, kFrames = 15, kStep = 6;
  const auto wide = PaintLandscape(kWidth + kFrames * kStep, kHeight, static_cast<unsigned>(seed));
  std::vector<Picture> frames;
  for (int i = 0; i < kFrames; ++i) {
    Picture frame{kWidth, kHeight, {}};
    for (int y = 0; y < kHeight; ++y) {
      frame.rgb.append(wide.rgb, static_cast<std::size_t>(y * wide.width + i * kStep) * 3, kWidth * 3);
    }
    frames.push_back(std::move(frame));
  }
  return EncodeAvi(frames, {.sound = true});
}

std::string Scan(const Picture& picture, int bits, const std::string& date) {
  auto tiff = PictureDirectory(picture, {.bits = bits, .rowsPerStrip = 16});
  tiff.Ascii(270, "Slide, scanned").Ascii(305, "Sample 1.0").Ascii(306, date);
  tiff.Bytes(33723, DemoTexts("A slide"));
  return tiff.Undefined(34675, IccProfile("Sample RGB")).Build();
}

}  // namespace

std::string DemoTexts(const std::string& title) {
  return IptcBlock({{120, "Hills under a morning sky.\nPainted by rule."},
                    {122, "B. Sample"},
                    {105, "Morning in the hills"},
                    {25, "hills"},
                    {25, "sky"},
                    {25, "sun"},
                    {15, "WEA"},
                    {20, "Landscape"},
                    {10, "8"},
                    {80, "A. Sample"},
                    {85, "Staff photographer"},
                    {116, "\xa9 2003 Tarnwick"},
                    {5, title},
                    {55, "20031004"},
                    {60, "080000+0200"},
                    {90, "Tarnwick"}});
}

std::vector<DemoFile> OtherKinds(int first, const std::function<std::string(int number)>& dateOf) {
  std::vector<DemoFile> files;
  int number = first;
  const auto paint = [&](int width, int height) {
    return PaintLandscape(width, height, static_cast<unsigned>(number++));
  };
  for (const auto& kind : kRaws) {
    const CameraRaw raw{
        .seed = static_cast<unsigned>(number), .orientation = kind.orientation, .dateTime = dateOf(number)};
    files.push_back({Name(kind.prefix, number, kind.extension), kind.make(raw)});
    if (kind.thm) files.push_back({Name(kind.prefix, number, "THM"), MakeThm(raw)});
    ++number;
  }
  files.push_back({Name("MVI_", number, "AVI"), Movie(number)});
  files.push_back(
      {Name("MVI_", number, "THM"), MakeThm({.seed = static_cast<unsigned>(number), .dateTime = dateOf(number)})});
  ++number;
  files.push_back({"slide 01.tif", Scan(paint(600, 400), 8, dateOf(number))});
  files.push_back({"slide 02.tif", Scan(paint(400, 600), 16, dateOf(number))});
  files.push_back({"valley.png", EncodePng(paint(640, 400), {.before = PngText("Description", "A valley")})});
  files.push_back({"fading.png", EncodePng(paint(480, 320), {.colours = PngColours::RgbWithAlpha})});
  files.push_back({"banner.gif", EncodeGif({paint(468, 120)})});
  files.push_back({"blinking.gif", EncodeGif({paint(240, 160), paint(240, 160)})});
  files.push_back({"wallpaper.bmp", EncodeBmp(paint(640, 480))});
  const auto caption = ImageResources({{1028, IptcBlock({{120, "A poster"}, {25, "poster"}})}});
  files.push_back({"poster.psd", EncodePsd(paint(480, 640), {.packBits = true, .resources = caption})});
  files.push_back({"archive.jp2", EncodeJp2(paint(600, 400))});
  return files;
}

}  // namespace ml::test
