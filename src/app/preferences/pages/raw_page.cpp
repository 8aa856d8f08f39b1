#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kDisplay = "Display";
constexpr std::string_view kConversion = "Conversion";

constexpr Choice kPriorities[] = {{"0", "Normal"}, {"1", "Low"}, {"2", "High"}};

constexpr PreferenceRow kRows[] = {
    {"ConvertEos1DRawInMainView", kDisplay, "De&velop EOS-1D raw files in the main view",
     "Shows what a conversion would give instead of the viewing JPEG. Takes some seconds an image.", CheckField{},
     Effects{Effect::ReloadPicture}},
    {"ThreadPriority",
     kConversion,
     "&Priority of long work:",
     "How much of the processor conversions and other long work take from other programs.",
     ChoiceField{kPriorities},
     {},
     {},
     "Counts from the next conversion on."},
};

}  // namespace

std::span<const PreferenceRow> RawRows() { return kRows; }

}  // namespace ml::app
