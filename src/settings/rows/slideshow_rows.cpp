#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::slideshow, Members...>;

constexpr SettingRow kRows[] = {
    {"SlideshowInterval", In<&SlideshowSettings::interval>},
    {"SlideshowBottomCaption", In<&SlideshowSettings::bottomCaption>},
    {"SlideshowShowCaption", In<&SlideshowSettings::showCaption>},
    {"SlideshowFormatString", In<&SlideshowSettings::formatString>},
};

}  // namespace

std::span<const SettingRow> SlideshowRows() { return kRows; }

}  // namespace ml::settings
