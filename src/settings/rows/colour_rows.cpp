#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::colour, Members...>;

constexpr SettingRow kRows[] = {
    {"EnableMonitorProfile", In<&ColourSettings::enableMonitorProfile>},
    {"MonitorProfile", In<&ColourSettings::monitorProfile>},
    {"JPEGProfile", In<&ColourSettings::jpegProfile>},
    {"EnableDefaultProfile", In<&ColourSettings::enableDefaultProfile>},
    {"DefaultProfile", In<&ColourSettings::defaultProfile>},
    {"ReadProfileFromExif", In<&ColourSettings::readProfileFromExif>},
    {"EnablePrinterProfile", In<&ColourSettings::enablePrinterProfile>},
    {"SuppressThumbnailCMS", In<&ColourSettings::suppressThumbnailColour>},
};

}  // namespace

std::span<const SettingRow> ColourRows() { return kRows; }

}  // namespace ml::settings
