#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::html, Members...>;

template <auto Member>
constexpr auto MainWatermark = In<&HtmlSettings::mainWatermark, Member>;

template <auto Member>
constexpr auto ThumbnailWatermark = In<&HtmlSettings::thumbnailWatermark, Member>;

template <std::size_t Row, auto Half, auto Member>
SettingSlot Size(Settings& settings) {
  return &(settings.html.sizes[Row].*Half.*Member);
}

constexpr SettingRow kRows[] = {
    {"HtmlTemplateBaseDir", In<&HtmlSettings::templateBaseDir>},
    {"HtmlTemplate", In<&HtmlSettings::templateName>},
    {"HtmlMainWidth", Size<0, &HtmlSizePair::main, &HtmlImageSize::width>},
    {"HtmlMainHeight", Size<0, &HtmlSizePair::main, &HtmlImageSize::height>},
    {"HtmlMainJpegQuality", Size<0, &HtmlSizePair::main, &HtmlImageSize::jpegQuality>},
    {"HtmlMainRadius", Size<0, &HtmlSizePair::main, &HtmlImageSize::radius>},
    {"HtmlMainSigma", Size<0, &HtmlSizePair::main, &HtmlImageSize::sigma>},
    {"HtmlMainAmount", Size<0, &HtmlSizePair::main, &HtmlImageSize::amount>},
    {"HtmlMainThreshold", Size<0, &HtmlSizePair::main, &HtmlImageSize::threshold>},
    {"HtmlThumbnailWidth", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::width>},
    {"HtmlThumbnailHeight", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::height>},
    {"HtmlThumbnailJpegQuality", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::jpegQuality>},
    {"HtmlThumbnailRadius", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::radius>},
    {"HtmlThumbnailSigma", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::sigma>},
    {"HtmlThumbnailAmount", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::amount>},
    {"HtmlThumbnailThreshold", Size<0, &HtmlSizePair::thumbnail, &HtmlImageSize::threshold>},
    {"Html2MainWidth", Size<1, &HtmlSizePair::main, &HtmlImageSize::width>},
    {"Html2MainHeight", Size<1, &HtmlSizePair::main, &HtmlImageSize::height>},
    {"Html2MainJpegQuality", Size<1, &HtmlSizePair::main, &HtmlImageSize::jpegQuality>},
    {"Html2MainRadius", Size<1, &HtmlSizePair::main, &HtmlImageSize::radius>},
    {"Html2MainSigma", Size<1, &HtmlSizePair::main, &HtmlImageSize::sigma>},
    {"Html2MainAmount", Size<1, &HtmlSizePair::main, &HtmlImageSize::amount>},
    {"Html2MainThreshold", Size<1, &HtmlSizePair::main, &HtmlImageSize::threshold>},
    {"Html2ThumbnailWidth", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::width>},
    {"Html2ThumbnailHeight", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::height>},
    {"Html2ThumbnailJpegQuality", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::jpegQuality>},
    {"Html2ThumbnailRadius", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::radius>},
    {"Html2ThumbnailSigma", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::sigma>},
    {"Html2ThumbnailAmount", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::amount>},
    {"Html2ThumbnailThreshold", Size<1, &HtmlSizePair::thumbnail, &HtmlImageSize::threshold>},
    {"Html3MainWidth", Size<2, &HtmlSizePair::main, &HtmlImageSize::width>},
    {"Html3MainHeight", Size<2, &HtmlSizePair::main, &HtmlImageSize::height>},
    {"Html3MainJpegQuality", Size<2, &HtmlSizePair::main, &HtmlImageSize::jpegQuality>},
    {"Html3MainRadius", Size<2, &HtmlSizePair::main, &HtmlImageSize::radius>},
    {"Html3MainSigma", Size<2, &HtmlSizePair::main, &HtmlImageSize::sigma>},
    {"Html3MainAmount", Size<2, &HtmlSizePair::main, &HtmlImageSize::amount>},
    {"Html3MainThreshold", Size<2, &HtmlSizePair::main, &HtmlImageSize::threshold>},
    {"Html3ThumbnailWidth", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::width>},
    {"Html3ThumbnailHeight", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::height>},
    {"Html3ThumbnailJpegQuality", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::jpegQuality>},
    {"Html3ThumbnailRadius", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::radius>},
    {"Html3ThumbnailSigma", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::sigma>},
    {"Html3ThumbnailAmount", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::amount>},
    {"Html3ThumbnailThreshold", Size<2, &HtmlSizePair::thumbnail, &HtmlImageSize::threshold>},
    {"HtmlRawConvert", In<&HtmlSettings::rawConvert>},
    {"HtmlReuseExistingImages", In<&HtmlSettings::reuseExistingImages>},
    {"HtmlDeleteUnusedFiles", In<&HtmlSettings::deleteUnusedFiles>},
    {"HtmlSettings", In<&HtmlSettings::selectedSize>},
    {"HtmlSaveSettings", In<&HtmlSettings::saveSettings>},
    {"HtmlAutoLevel", In<&HtmlSettings::autoLevel>},
    {"HtmlUser1", In<&HtmlSettings::user1>},
    {"HtmlUser2", In<&HtmlSettings::user2>},
    {"HtmlUser3", In<&HtmlSettings::user3>},
    {"HtmlFastMode", In<&HtmlSettings::fastMode>},
    {"HtmlAddCopyright", In<&HtmlSettings::addMainWatermark>},
    {"HtmlCopyrightDisplayIcon", MainWatermark<&WatermarkSettings::displayIcon>},
    {"HtmlCopyrightIcon", MainWatermark<&WatermarkSettings::icon>},
    {"HtmlCopyrightText", MainWatermark<&WatermarkSettings::text>},
    {"HtmlCopyrightTextFont", MainWatermark<&WatermarkSettings::font>},
    {"HtmlCopyrightTextAlignment", MainWatermark<&WatermarkSettings::textAlignment>},
    {"HtmlCopyrightMessageBackgroundColour", MainWatermark<&WatermarkSettings::backgroundColour>},
    {"HtmlCopyrightMessageForegroundColour", MainWatermark<&WatermarkSettings::foregroundColour>},
    {"HtmlCopyrightMessageBackgroundTrans", MainWatermark<&WatermarkSettings::backgroundTrans>},
    {"HtmlCopyrightMessageForegroundTrans", MainWatermark<&WatermarkSettings::foregroundTrans>},
    {"HtmlCopyrightMessagePlacement", MainWatermark<&WatermarkSettings::placement>},
    {"HtmlCopyrightMessageHorzOffset", MainWatermark<&WatermarkSettings::horzOffset>},
    {"HtmlCopyrightMessageVertOffset", MainWatermark<&WatermarkSettings::vertOffset>},
    {"HtmlWatermarkThumbnail", In<&HtmlSettings::addThumbnailWatermark>},
    {"HtmlThumbCopyrightDisplayIcon", ThumbnailWatermark<&WatermarkSettings::displayIcon>},
    {"HtmlThumbCopyrightIcon", ThumbnailWatermark<&WatermarkSettings::icon>},
    {"HtmlThumbCopyrightText", ThumbnailWatermark<&WatermarkSettings::text>},
    {"HtmlThumbCopyrightTextFont", ThumbnailWatermark<&WatermarkSettings::font>},
    {"HtmlThumbCopyrightTextAlignment", ThumbnailWatermark<&WatermarkSettings::textAlignment>},
    {"HtmlThumbCopyrightMessageBackgroundColour", ThumbnailWatermark<&WatermarkSettings::backgroundColour>},
    {"HtmlThumbCopyrightMessageForegroundColour", ThumbnailWatermark<&WatermarkSettings::foregroundColour>},
    {"HtmlThumbCopyrightMessageBackgroundTrans", ThumbnailWatermark<&WatermarkSettings::backgroundTrans>},
    {"HtmlThumbCopyrightMessageForegroundTrans", ThumbnailWatermark<&WatermarkSettings::foregroundTrans>},
    {"HtmlThumbCopyrightMessagePlacement", ThumbnailWatermark<&WatermarkSettings::placement>},
    {"HtmlThumbCopyrightMessageHorzOffset", ThumbnailWatermark<&WatermarkSettings::horzOffset>},
    {"HtmlThumbCopyrightMessageVertOffset", ThumbnailWatermark<&WatermarkSettings::vertOffset>},
    {"HtmlConvertToSRGB", In<&HtmlSettings::convertToSrgb>},
    {"HtmlLowerCaseFilenames", In<&HtmlSettings::lowerCaseFilenames>},
    {"HtmlRememberOutputDir", In<&HtmlSettings::rememberOutputDir>},
    {"HtmlOutputDir", In<&HtmlSettings::outputDir>},
    {"HtmlUseExifOwner", In<&HtmlSettings::useExifOwner>},
    {"HtmlOwnerString", In<&HtmlSettings::ownerString>},
    {"HtmlHomeURL", In<&HtmlSettings::homeUrl>},
    {"HtmlNextText", In<&HtmlSettings::nextText>},
    {"HtmlPrevText", In<&HtmlSettings::prevText>},
    {"HtmlMainImageDir", In<&HtmlSettings::mainImageDir>},
    {"HtmlMainImageSuffix", In<&HtmlSettings::mainImageSuffix>},
    {"HtmlMainImagePrefix", In<&HtmlSettings::mainImagePrefix>},
    {"HtmlThumbnailDir", In<&HtmlSettings::thumbnailDir>},
    {"HtmlThumbnailSuffix", In<&HtmlSettings::thumbnailSuffix>},
    {"HtmlThumbnailPrefix", In<&HtmlSettings::thumbnailPrefix>},
    {"HtmlCopyIptc", In<&HtmlSettings::copyIptc>},
};

}  // namespace

std::span<const SettingRow> HtmlRows() { return kRows; }

}  // namespace ml::settings
