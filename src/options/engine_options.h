#pragma once

#include "catalogue/catalogue.h"
#include "imagefiles/image_file_options.h"
#include "metadata/exif_data.h"
#include "settings/settings.h"

/// The engine takes small value structs, not the settings: here they are cut from them, once for both programs.
namespace ml::options {

catalogue::CatalogueOptions CatalogueOptionsOf(const settings::Settings& settings);
metadata::ExifOptions ExifOptionsOf(const settings::Settings& settings);
imagefiles::ImageFileOptions ImageFileOptionsOf(const settings::Settings& settings);

}  // namespace ml::options
