#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/image_list.h"
#include "imagefiles/colour_options.h"
#include "imagefiles/image_file_options.h"
#include "metadata/exif_data.h"
#include "settings/settings.h"

/// The engine takes small value structs, not the settings: here they are cut from them, once for both programs.
namespace ml::options {

catalogue::CatalogueOptions CatalogueOptionsOf(const settings::Settings& settings);
/// The order that a directory without an order file is shown in.
void TakeSortOrder(const settings::Settings& settings, catalogue::ImageList& list);
metadata::ExifOptions ExifOptionsOf(const settings::Settings& settings);
imagefiles::ImageFileOptions ImageFileOptionsOf(const settings::Settings& settings);
/// Where the monitor is to be managed but no profile of it is set, it is the system's: the first such call of a run
/// asks for it, which may take a moment.
imagefiles::ColourOptions ColourOptionsOf(const settings::Settings& settings);

}  // namespace ml::options
