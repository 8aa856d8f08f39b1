#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::printing, Members...>;

constexpr SettingRow kRows[] = {
    {"PrinterProfile", In<&PrintSettings::printerProfile>},
    {"PrintThumbnailRows", In<&PrintSettings::thumbnailRows>},
    {"PrintThumbnailCols", In<&PrintSettings::thumbnailCols>},
    {"PrintThumbnailSpacing_mm", In<&PrintSettings::thumbnailSpacing>},
    {"PrintThumbnailCaptionFormatString", In<&PrintSettings::caption>},
    {"PrintThumbnailFooterText", In<&PrintSettings::footer>},
    {"PrintThumbnailRotateToMatchPaper", In<&PrintSettings::thumbnailRotate>},
    {"PrintTopMargin_mm", In<&PrintSettings::topMargin>},
    {"PrintBottomMargin_mm", In<&PrintSettings::bottomMargin>},
    {"PrintLeftMargin_mm", In<&PrintSettings::leftMargin>},
    {"PrintRightMargin_mm", In<&PrintSettings::rightMargin>},
    {"PrintDPI", In<&PrintSettings::dpi>},
    {"PrintResizeToFit", In<&PrintSettings::resizeToFit>},
    {"PrintRotateToFit", In<&PrintSettings::rotateToFit>},
    {"PrintSameSizeThumbnails", In<&PrintSettings::sameSizeThumbnails>},
    {"PrintImagePlacement", In<&PrintSettings::imagePlacement>},
    {"PrintSwapMargins", In<&PrintSettings::swapMargins>},
    {"PrintBackgroundColor", In<&PrintSettings::backgroundColour>},
    {"PrintBackgroundImage", In<&PrintSettings::backgroundImage>},
    {"PrintBackgroundStyle", In<&PrintSettings::backgroundStyle>},
    {"PrintAddBorder", In<&PrintSettings::addBorder>},
    {"PrintCaptionFont", In<&PrintSettings::captionFont>},
    {"PrintCaptionFontColor", In<&PrintSettings::captionColour>},
    {"PrintFooterFont", In<&PrintSettings::footerFont>},
    {"PrintFooterFontColor", In<&PrintSettings::footerColour>},
};

}  // namespace

std::span<const SettingRow> PrintRows() { return kRows; }

}  // namespace ml::settings
