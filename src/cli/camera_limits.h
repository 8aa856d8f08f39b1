#pragma once

#include <string>

#include "cli/run_state.h"
#include "metadata/exif_data.h"
#include "rawconvert/output_format.h"
#include "rawconvert/raw_conversion_settings.h"

namespace ml::cli {

/// How a raw file is converted where its camera cannot do all that was asked for.
struct CameraLimits {
  rawconvert::Method method = rawconvert::Method::Normal;  ///< to convert it by, which its name tells
  std::string remark;  ///< what of it the camera cannot do, without a full stop; empty for nothing
};

/// Of the file `path`, of which `exif` is, when `method` and `format` are asked for. Other settings count where the
/// command line itself has them: those that are stored are for any camera.
CameraLimits LimitsOf(const std::string& path, const metadata::ExifData& exif, rawconvert::Method method,
                      rawconvert::OutputFormat format, const RunState& state);

}  // namespace ml::cli
