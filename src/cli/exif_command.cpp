#include "cli/exif_command.h"

#include <nlohmann/json.hpp>

#include "imagefiles/profile_name.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::cli {

void ShowExif(const std::vector<std::string>& files, const ExifPresenter& presenter, RunState& state) {
  const auto options = options::ExifOptionsOf(state.settings);
  auto result = Json::array();
  for (const auto& given : files) {
    if (state.stop.stop_requested()) break;
    Json object;
    if (state.json) PutPath(object, "path", given);
    try {
      const platform::ReadableFile readable(given);  // the record itself is silent about a file it may not open
    } catch (const platform::UserError& error) {
      if (state.json) object["message"] = JsonText(error.what());
      state.Fail(error.what());
    }
    metadata::ExifData data(given, options);
    imagefiles::FillProfileName(data);
    if (state.json) {
      presenter.toJson(data, object);
      result.push_back(std::move(object));
    } else {
      presenter.toPeople(given, data);
    }
  }
  if (state.json) PrintJson(result);
  if (state.stop.stop_requested()) throw platform::Cancelled();
}

}  // namespace ml::cli
