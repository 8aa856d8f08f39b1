#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/output.h"
#include "cli/run_state.h"
#include "metadata/exif_data.h"

namespace ml::cli {

/// How a command shows the shooting data of one file.
struct ExifPresenter {
  std::function<void(metadata::ExifData& data, Json& object)> toJson;  ///< adds to `path`
  std::function<void(const std::string& given, metadata::ExifData& data)> toPeople;
};

/// Reads the files one after the other and prints all of them. Of one that cannot be opened it tells, and its object
/// says why under "message".
void ShowExif(const std::vector<std::string>& files, const ExifPresenter& presenter, RunState& state);

}  // namespace ml::cli
