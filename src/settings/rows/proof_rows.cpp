#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::proofs, Members...>;

template <auto Member>
constexpr auto Watermark1 = In<&ProofSettings::watermark1, Member>;

template <auto Member>
constexpr auto Watermark2 = In<&ProofSettings::watermark2, Member>;

constexpr SettingRow kRows[] = {
    {"ProofsFormat", In<&ProofSettings::format>},
    {"ProofsQuality", In<&ProofSettings::quality>},
    {"ProofsMaxWidth", In<&ProofSettings::maxWidth>},
    {"ProofsMaxHeight", In<&ProofSettings::maxHeight>},
    {"ProofsResizeUnits", In<&ProofSettings::resizeUnits>},
    {"ProofsResizeDPI", In<&ProofSettings::resizeDpi>},
    {"ProofsResize", In<&ProofSettings::resize>},
    {"ProofsRotateToLandscape", In<&ProofSettings::rotateToLandscape>},
    {"ProofsSaturation", In<&ProofSettings::saturation>},
    {"ProofsNoiseReduction", In<&ProofSettings::noiseReduction>},
    {"ProofsNoiseFilterStrength", In<&ProofSettings::noiseFilterStrength>},
    {"ProofsSharpenMethod", In<&ProofSettings::sharpenMethod>},
    {"ProofsHqSharpenAmount", In<&ProofSettings::hqSharpenAmount>},
    {"ProofsSharpen", In<&ProofSettings::sharpen>},
    {"ProofsUsmRadius", In<&ProofSettings::usmRadius>},
    {"ProofsUsmSigma", In<&ProofSettings::usmSigma>},
    {"ProofsUsmThreshold", In<&ProofSettings::usmThreshold>},
    {"ProofsUsmAmount", In<&ProofSettings::usmAmount>},
    {"ProofsGamma", In<&ProofSettings::gamma>},
    {"ProofsRawContrast", In<&ProofSettings::rawContrast>},
    {"ProofsRawSaturation", In<&ProofSettings::rawSaturation>},
    {"ProofsRawSharpness", In<&ProofSettings::rawSharpness>},
    {"ProofsRawWhiteBalance", In<&ProofSettings::rawWhiteBalance>},
    {"ProofsRawLinearConversion", In<&ProofSettings::rawLinearConversion>},
    {"ProofsCropImage", In<&ProofSettings::cropImage>},
    {"ProofsAdjustSaturation", In<&ProofSettings::adjustSaturation>},
    {"ProofsAdjustGamma", In<&ProofSettings::adjustGamma>},
    {"ProofsAutoLevels", In<&ProofSettings::autoLevels>},
    {"ProofsCropWidthRatio", In<&ProofSettings::cropWidthRatio>},
    {"ProofsCropHeightRatio", In<&ProofSettings::cropHeightRatio>},
    {"ProofsBlackPoint", In<&ProofSettings::blackPoint>},
    {"ProofsWhitePoint", In<&ProofSettings::whitePoint>},
    {"ProofsCopyrightDisplayIcon", Watermark1<&WatermarkSettings::displayIcon>},
    {"ProofsCopyrightIcon", Watermark1<&WatermarkSettings::icon>},
    {"ProofsCopyrightText", Watermark1<&WatermarkSettings::text>},
    {"ProofsCopyrightTextFont", Watermark1<&WatermarkSettings::font>},
    {"ProofsCopyrightTextAlignment", Watermark1<&WatermarkSettings::textAlignment>},
    {"ProofsAddCopyright", In<&ProofSettings::addWatermark1>},
    {"ProofsCopyrightMessageBackgroundColour", Watermark1<&WatermarkSettings::backgroundColour>},
    {"ProofsCopyrightMessageForegroundColour", Watermark1<&WatermarkSettings::foregroundColour>},
    {"ProofsCopyrightMessageBackgroundTrans", Watermark1<&WatermarkSettings::backgroundTrans>},
    {"ProofsCopyrightMessageForegroundTrans", Watermark1<&WatermarkSettings::foregroundTrans>},
    {"ProofsCopyrightMessagePlacement", Watermark1<&WatermarkSettings::placement>},
    {"ProofsCopyrightMessageHorzOffset", Watermark1<&WatermarkSettings::horzOffset>},
    {"ProofsCopyrightMessageVertOffset", Watermark1<&WatermarkSettings::vertOffset>},
    {"ProofsCopyright2DisplayIcon", Watermark2<&WatermarkSettings::displayIcon>},
    {"ProofsCopyright2Icon", Watermark2<&WatermarkSettings::icon>},
    {"ProofsCopyright2Text", Watermark2<&WatermarkSettings::text>},
    {"ProofsCopyright2TextFont", Watermark2<&WatermarkSettings::font>},
    {"ProofsCopyright2TextAlignment", Watermark2<&WatermarkSettings::textAlignment>},
    {"ProofsAddCopyright2", In<&ProofSettings::addWatermark2>},
    {"ProofsCopyright2MessageBackgroundColour", Watermark2<&WatermarkSettings::backgroundColour>},
    {"ProofsCopyright2MessageForegroundColour", Watermark2<&WatermarkSettings::foregroundColour>},
    {"ProofsCopyright2MessageBackgroundTrans", Watermark2<&WatermarkSettings::backgroundTrans>},
    {"ProofsCopyright2MessageForegroundTrans", Watermark2<&WatermarkSettings::foregroundTrans>},
    {"ProofsCopyright2MessagePlacement", Watermark2<&WatermarkSettings::placement>},
    {"ProofsCopyright2MessageHorzOffset", Watermark2<&WatermarkSettings::horzOffset>},
    {"ProofsCopyright2MessageVertOffset", Watermark2<&WatermarkSettings::vertOffset>},
    {"ProofsConvertColourspace", In<&ProofSettings::convertColourspace>},
    {"ProofsOutputProfile", In<&ProofSettings::outputProfile>},
    {"ProofsRenderingIntent", In<&ProofSettings::renderingIntent>},
    {"ProofsEmbedProfile", In<&ProofSettings::embedProfile>},
    {"ProofsBorder", In<&ProofSettings::border>},
    {"ProofsBorderSize", In<&ProofSettings::borderSize>},
    {"ProofsBorderColour", In<&ProofSettings::borderColour>},
    {"ProofsBorderStyle", In<&ProofSettings::borderStyle>},
};

}  // namespace

std::span<const SettingRow> ProofRows() { return kRows; }

}  // namespace ml::settings
