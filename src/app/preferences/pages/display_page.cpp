#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kPicture = "Picture";
constexpr std::string_view kHighlights = "Highlights";
constexpr std::string_view kHistogram = "Histogram";

constexpr Choice kOptimised[] = {{"0", "Largest image size"}, {"1", "D30 raw images"}, {"2", "G1/Pro90 raw images"}};
constexpr Choice kMeasures[] = {{"0", "Luminosity"}, {"1", "RGB value"}};

constexpr PreferenceRow kRows[] = {
    {"OptimiseSize",
     kPicture,
     "&Optimise image display for:",
     "Fits pictures to the sizes of embedded previews, so that those show unscaled.",
     ChoiceField{kOptimised},
     Effects{Effect::ReloadPicture},
     {},
     "For this run only: the program starts with the largest image size."},
    {"HighQualityMode", kPicture, "High &quality scaling", "Scales pictures with care, which takes longer.",
     CheckField{}, Effects{Effect::ReloadPicture}},
    {"UseJpegExifOrientation", kPicture, "&Turn JPEGs by their EXIF orientation",
     "Shows JPEGs upright where the camera noted how it was held.", CheckField{},
     Effects{Effect::RemakeThumbnails, Effect::ReloadPicture}},
    {"ShowFocusPoints", kPicture, "Show focus &points", "Draws the focus points of the camera over the picture.",
     CheckField{}, Effects{Effect::ReloadPicture}},
    {"HighlightBlink", kHighlights, "&Blink highlights", "Lets the brightest parts of the picture blink in black.",
     CheckField{}, Effects{Effect::ReloadPicture}},
    {"HighlightBlinkMethod", kHighlights,
     "&Measure:", "Luminosity weighs the channels together; RGB value looks whether any channel reaches the threshold.",
     ChoiceField{kMeasures}, Effects{Effect::ReloadPicture}},
    {"HighlightBlinkThreshold", kHighlights, "T&hreshold:", "From this value on a pixel blinks; 255 is the brightest.",
     NumberField{0, 255, ""}, Effects{Effect::ReloadPicture}},
    {"HistogramRed", kHistogram, "&Red", "Draws the curve of the red channel.", CheckField{},
     Effects{Effect::RedrawHistogram}},
    {"HistogramGreen", kHistogram, "&Green", "Draws the curve of the green channel.", CheckField{},
     Effects{Effect::RedrawHistogram}},
    {"HistogramBlue", kHistogram, "B&lue", "Draws the curve of the blue channel.", CheckField{},
     Effects{Effect::RedrawHistogram}},
    {"HistogramIntensity", kHistogram, "&Intensity", "Draws the intensity as a grey area behind the curves.",
     CheckField{}, Effects{Effect::RedrawHistogram}},
};

}  // namespace

std::span<const PreferenceRow> DisplayRows() { return kRows; }

}  // namespace ml::app
