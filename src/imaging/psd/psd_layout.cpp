#include "imaging/psd/psd_layout.h"

#include <algorithm>

#include "imaging/decoded_picture.h"
#include "imaging/messages.h"

namespace ml::imaging {
namespace {

constexpr int kMaxChannels = 56;  // the format's own limit

bool IsKnown(PsdMode mode) {
  constexpr std::array kModes{PsdMode::Grey, PsdMode::Indexed, PsdMode::Rgb, PsdMode::Cmyk, PsdMode::Duotone};
  return std::ranges::find(kModes, mode) != kModes.end();
}

void CheckKind(const PsdLayout& layout) {
  const auto& file = layout.file;
  CheckPixelCount(file.width, file.height, kMaxPixelsWhole);
  if (!IsKnown(file.mode)) Refuse("The colour mode of the picture is not read");
  const bool sixteen = file.depth == 16 && file.mode != PsdMode::Indexed;
  if (file.depth != 8 && !sixteen) Refuse("The bit depth of the picture is not read");
  if (file.channels < layout.ColourChannels() || file.channels > kMaxChannels) Refuse("Channels are missing");
}

}  // namespace

PsdLayout ReadPsdLayout(const metadata::ByteSource& source) {
  auto file = metadata::ReadPsdFile(source, metadata::PsdVersions::WithLarge);
  if (!file) Refuse("Not a PSD file");
  PsdLayout layout{.file = *std::move(file)};
  CheckKind(layout);
  if (layout.file.mergedImage == 0) Refuse(messages::kFileEndsEarly);
  if (layout.file.mode == PsdMode::Indexed) {
    const auto& colours = layout.file.colourTable;
    if (colours.size < layout.palette.size()) Refuse("The palette is missing");
    source.ReadExactly(colours.position, layout.palette);
  }
  return layout;
}

}  // namespace ml::imaging
