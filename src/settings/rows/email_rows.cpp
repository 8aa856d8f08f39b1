#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::email, Members...>;

constexpr SettingRow kRows[] = {
    {"emailSizingMethod", In<&EmailSettings::sizingMethod>},
    {"emailJpegQuality", In<&EmailSettings::jpegQuality>},
    {"emailMaxHeight", In<&EmailSettings::maxHeight>},
    {"emailMaxWidth", In<&EmailSettings::maxWidth>},
    {"emailAsIs", In<&EmailSettings::asIs>},
    {"emailConvertRaw", In<&EmailSettings::convertRaw>},
};

}  // namespace

std::span<const SettingRow> EmailRows() { return kRows; }

}  // namespace ml::settings
