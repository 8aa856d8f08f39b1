#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::display, Members...>;

constexpr SettingRow kRows[] = {
    {"HistogramRed", In<&DisplaySettings::histogramRed>},
    {"HistogramGreen", In<&DisplaySettings::histogramGreen>},
    {"HistogramBlue", In<&DisplaySettings::histogramBlue>},
    {"HistogramIntensity", In<&DisplaySettings::histogramIntensity>},
    {"HighQualityMode", In<&DisplaySettings::highQualityMode>},
    {"ShowFocusPoints", In<&DisplaySettings::showFocusPoints>},
    {"HighlightBlink", In<&DisplaySettings::highlightBlink>},
    {"HighlightBlinkMethod", In<&DisplaySettings::highlightBlinkMethod>},
    {"HighlightBlinkThreshold", In<&DisplaySettings::highlightBlinkThreshold>},
    {"HistogramDlgXpos", In<&DisplaySettings::histogramX>},
    {"HistogramDlgYpos", In<&DisplaySettings::histogramY>},
    {"OptimiseSize", In<&DisplaySettings::optimiseSize>, Stored::WriteOnly},
};

}  // namespace

std::span<const SettingRow> DisplayRows() { return kRows; }

}  // namespace ml::settings
