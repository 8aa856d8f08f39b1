#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::raw, Members...>;

constexpr SettingRow kRows[] = {
    {"JpegQuality", In<&RawSettings::jpegQuality>},
    {"RawConvertFormat", In<&RawSettings::convertFormat>},
    {"ConvertToSubDir", In<&RawSettings::convertToSubDir>},
    {"ConvertDirectory", In<&RawSettings::convertDirectory>},
    {"TiffOutputResolution", In<&RawSettings::tiffOutputResolution>},
    {"FalseColourFilter", In<&RawSettings::falseColourFilter>, Stored::ReadOnly},
    {"LinearConvert", In<&RawSettings::method>},
    {"RawPostProcess", In<&RawSettings::postProcess>},
    {"RawAdjustSaturation", In<&RawSettings::adjustSaturation>},
    {"RawSaturation", In<&RawSettings::saturation>},
    {"RawAdjustGamma", In<&RawSettings::adjustGamma>},
    {"RawGamma", In<&RawSettings::gamma>},
    {"RawLevelsStyle", In<&RawSettings::levelsStyle>},
    {"RawBlackPointValue", In<&RawSettings::blackPoint>},
    {"RawMidPointValue", In<&RawSettings::midPoint>},
    {"RawWhitePointValue", In<&RawSettings::whitePoint>},
    {"RawBlackPointPercentage", In<&RawSettings::blackPointPercent>},
    {"RawWhitePointPercentage", In<&RawSettings::whitePointPercent>},
    {"RawResizeImage", In<&RawSettings::resize>},
    {"RawResizeWidth", In<&RawSettings::resizeWidth>},
    {"RawResizeHeight", In<&RawSettings::resizeHeight>},
    {"RawResizeUnits", In<&RawSettings::resizeUnits>},
    {"RawResizeDPI", In<&RawSettings::resizeDpi>},
    {"RawSharpen", In<&RawSettings::sharpen>},
    {"RawSharpenMethod", In<&RawSettings::sharpenMethod>},
    {"RawHqSharpenAmount", In<&RawSettings::hqSharpenAmount>},
    {"RawUsmRadius", In<&RawSettings::usmRadius>},
    {"RawUsmAmount", In<&RawSettings::usmAmount>},
    {"RawUsmThreshold", In<&RawSettings::usmThreshold>},
    {"RawSameWhiteBalance", In<&RawSettings::sameWhiteBalance>},
    {"EOS1DsharpeningLevel", In<&RawSettings::sharpnessLevel>},
    {"EOS1DsharpeningObject", In<&RawSettings::sharpnessObject>},
    {"EOS1DcolourMatrix", In<&RawSettings::colourMatrix>},
    {"FalseResolutionFilter", In<&RawSettings::falseResolutionFilter>, Stored::ReadOnly},
    {"RawAutoPreview", In<&RawSettings::autoPreview>},
    {"RawExpCompAutoPreview", In<&RawSettings::expCompAutoPreview>},
    {"RawConvertContrast", In<&RawSettings::developContrast>},
    {"RawConvertSaturation", In<&RawSettings::developSaturation>},
    {"RawConvertSharpness", In<&RawSettings::developSharpness>},
    {"RawConvertTone", In<&RawSettings::developTone>},
    {"RawPhotoEffect", In<&RawSettings::photoEffect>},
    {"EOS10DcolourSpace", In<&RawSettings::colourSpace>},
    {"EOS10DcolourTemp", In<&RawSettings::colourTemperature>},
    {"RawConvertEnableLinearProfile", In<&RawSettings::enableLinearProfile>},
    {"RawConvertEnableNormalProfile", In<&RawSettings::enableNormalProfile>},
    {"RawConvertNormalProfile", In<&RawSettings::normalProfile>},
    {"RawConvertLinearProfile", In<&RawSettings::linearProfile>},
    {"RawConvertFilenameAppend", In<&RawSettings::filenameAppend>},
    {"SmNRBlending", In<&RawSettings::noiseBlending>},
    {"ThreadPriority", In<&RawSettings::threadPriority>, Stored::ReadWrite, OneTwoOrZero},
    {"ConvertEos1DRawInMainView", In<&RawSettings::convertEos1DRawInMainView>},
};

}  // namespace

std::span<const SettingRow> RawRows() { return kRows; }

}  // namespace ml::settings
