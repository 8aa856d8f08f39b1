#include "imagefiles/raw_files.h"

#include <algorithm>
#include <string_view>

#include "imagefiles/eos1d_test.h"
#include "imagefiles/format_table.h"
#include "imagefiles/thm_file.h"
#include "metadata/canon/canon_model.h"
#include "platform/paths.h"

namespace ml::imagefiles {
namespace {

/// In lower case; a model holds one of them, but not at its start.
constexpr std::string_view kCanonModels[] = {
    "powershot pro90 is", "powershot g1",      "powershot g2",  "powershot g3", "powershot g5", "powershot s30",
    "powershot s40",      "powershot s45",     "powershot s50", "eos d30",      "eos d60",      "eos 10d",
    "eos 300d",           "eos digital rebel", "eos kiss",      "eos-1d",       "eos-1ds"};
/// In lower case; a model is one of them.
constexpr std::string_view kNikonModels[] = {"e5700", "nikon d1x", "nikon d1h", "nikon d2h", "nikon d100", "nikon d1"};

}  // namespace

bool IsRawFile(const std::string& path) {
  const auto ends = [&](std::string_view ending) { return platform::EndsWithNoCase(path, ending); };
  return ends(".crw") || ends(".thm") || ends(".nef") || (ends(".tif") && IsEos1DRawFile(path));
}

bool IsAnyRawFile(const std::string& path) {
  constexpr Format kRaw[] = {Format::Crw, Format::Nef, Format::Mrw, Format::Orf, Format::Raf, Format::Pef};
  const auto* row = FindFormat(path);
  if (row == nullptr) return false;
  if (row->format == Format::Tiff) return platform::EndsWithNoCase(path, ".tif") && IsEos1DRawFile(path);
  return std::ranges::find(kRaw, row->format) != std::end(kRaw);
}

bool CanHoldIptc(const std::string& path) {
  const auto* row = FindFormat(path);
  if (row == nullptr || row->iptcHome == IptcHome::None) return false;
  if (row->hasThm) return !FindThm(path).empty();
  // Kept: not the second spelling of JPEG 2000 names, although writers take it.
  return !platform::EndsWithNoCase(path, ".jpf");
}

bool CanConvertRaw(const metadata::ExifData& exif) {
  const auto make = platform::AsciiLower(exif.make);
  if (make.find("canon") != std::string::npos) return metadata::ModelHoldsAny(exif.model, kCanonModels);
  return make.find("nikon") != std::string::npos &&
         std::ranges::find(kNikonModels, platform::AsciiLower(exif.model)) != std::end(kNikonModels);
}

bool CanConvertRaw(const std::string& path) { return CanConvertRaw(metadata::ExifData(path)); }

}  // namespace ml::imagefiles
