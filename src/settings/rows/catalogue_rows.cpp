#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::catalogue, Members...>;

constexpr SettingRow kRows[] = {
    {"ImageFilename", In<&CatalogueSettings::imageFilename>},
    {"SortMethod", In<&CatalogueSettings::sortMethod>},
    {"ReverseOrderSort", In<&CatalogueSettings::reverseSort>},
    {"RecycleDeletedFiles", In<&CatalogueSettings::recycleDeletedFiles>},
    {"ThumbnailSize", In<&CatalogueSettings::thumbnailSize>, Stored::ReadWrite, OneTwoOrZero},
    {"ExtraLargeThumbnailSize", In<&CatalogueSettings::extraLargeThumbnailSize>},
    {"ThumbnailMode", In<&CatalogueSettings::thumbnailMode>},
    {"FullView", In<&CatalogueSettings::fullView>},
    {"ThumbnailBackgroundColour", In<&CatalogueSettings::thumbnailBackgroundColour>},
    {"ConfirmDelete", In<&CatalogueSettings::confirmDelete>},
    {"IgnoreEmbeddedThumbnails", In<&CatalogueSettings::ignoreEmbeddedThumbnails>},
    {"UseJpegExifOrientation", In<&CatalogueSettings::useJpegExifOrientation>},
    {"AutoCreateEos1DRawJpegs", In<&CatalogueSettings::autoCreateEos1DRawJpegs>},
    {"LargeEos1DRawJpegs", In<&CatalogueSettings::largeEos1DRawJpegs>},
    {"BindJpegToEos1DRaw", In<&CatalogueSettings::bindJpegToEos1DRaw>},
    {"LoadDirectoryAtStartup", In<&CatalogueSettings::loadDirectoryAtStartup>},
    {"ShowHiddenDirectories", In<&CatalogueSettings::showHiddenDirectories>},
    {"SplitterPos", In<&CatalogueSettings::splitterPos>},
    {"FilmStripSplitterPos", In<&CatalogueSettings::filmStripSplitterPos>},
    {"FilmHorizStripSplitterPos", In<&CatalogueSettings::filmStripHorizontalSplitterPos>},
    {"Wraparound", In<&CatalogueSettings::wraparound>},
    {"SuppressMarrowlanternDatFile", In<&CatalogueSettings::suppressOrderFile>},
    {"ImageDclickAction", In<&CatalogueSettings::imageDclickAction>},
    {"tagsIgnoreExt", In<&CatalogueSettings::tagsIgnoreExt>},
    {"OutlineTaggedThumbnails", In<&CatalogueSettings::outlineTaggedThumbnails>},
    {"PreserveImageModificationTime", In<&CatalogueSettings::preserveImageModificationTime>},
};

}  // namespace

std::span<const SettingRow> CatalogueRows() { return kRows; }

}  // namespace ml::settings
