#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::shootingData, Members...>;

constexpr SettingRow kRows[] = {
    {"ExifExportOnePerImage", In<&ShootingDataSettings::exportOnePerImage>},
    {"ExifExportDelimiter", In<&ShootingDataSettings::exportDelimiter>},
    {"ExifExportHeadings", In<&ShootingDataSettings::exportHeadings>},
    {"ExifExportCustomFormat", In<&ShootingDataSettings::exportCustomFormat>},
    {"ExifExportFormatString", In<&ShootingDataSettings::exportFormatString>},
    {"ExtractJpegExif", In<&ShootingDataSettings::extractJpegExif>},
    {"ExtractJpegRotate", In<&ShootingDataSettings::extractJpegRotate>},
    {"ExtractJpegTimestamp", In<&ShootingDataSettings::extractJpegTimestamp>},
    {"ExtractJpegCopyViewingJpegs", In<&ShootingDataSettings::extractJpegCopyViewingJpegs>},
    {"CopyExifDataToTiffs", In<&ShootingDataSettings::copyExifDataToTiffs>},
    {"ExifFormatString", In<&ShootingDataSettings::exifFormatString>},
    {"FilmStripExifFormatString", In<&ShootingDataSettings::filmStripExifFormatString>},
    {"MainExifFormatString", In<&ShootingDataSettings::mainExifFormatString>},
    {"TiffRotateWarning", In<&ShootingDataSettings::tiffRotateWarning>},
    {"AdjustTimeTimestamp", In<&ShootingDataSettings::adjustTimeTimestamp>},
    {"RegenEmbeddedJpegWidth", In<&ShootingDataSettings::regenEmbeddedJpegWidth>},
    {"RegenEmbeddedJpegQuality", In<&ShootingDataSettings::regenEmbeddedJpegQuality>},
    {"ExifDlgXpos", In<&ShootingDataSettings::shootingDataX>},
    {"ExifDlgYpos", In<&ShootingDataSettings::shootingDataY>},
    {"ExifDlgWidth", In<&ShootingDataSettings::shootingDataWidth>},
    {"ExifDlgHeight", In<&ShootingDataSettings::shootingDataHeight>},
};

}  // namespace

std::span<const SettingRow> ShootingDataRows() { return kRows; }

}  // namespace ml::settings
