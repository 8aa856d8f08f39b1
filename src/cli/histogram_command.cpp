#include <CLI/CLI.hpp>
#include <array>
#include <cstdint>
#include <exception>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/box_option.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "imagefiles/image_file.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/numbers.h"

namespace ml::cli {
namespace {

using imagefiles::Histogram;

struct HistogramJob {
  imagefiles::DisplayLimits limits;
  imagefiles::ImageFileOptions options;
  imagefiles::BitmapQuality quality;
};

Histogram Count(const std::string& path, const HistogramJob& job) {
  const auto image = imagefiles::CreateImageFile(path, job.options);
  if (!image) throw platform::UserError(path + ": does not exist, or is no image that can be shown");
  image->GetBitmap(job.limits, job.quality);
  return image->GetHistogram();
}

/// The mean level of a table, 0..255.
std::string MeanOf(const std::array<std::int32_t, 256>& table, std::uint32_t pixelCount) {
  double sum = 0;
  for (std::size_t i = 0; i < table.size(); ++i) sum += static_cast<double>(i) * table[i];
  return platform::FixedNumber(pixelCount == 0 ? 0 : sum / pixelCount, 1);
}

void PrintMeans(const std::string& given, const Histogram& histogram) {
  const auto mean = [&](const auto& table) { return MeanOf(table, histogram.pixelCount); };
  PrintLine(given + ": " + std::to_string(histogram.pixelCount) + " pixels, mean red " + mean(histogram.red) +
            ", green " + mean(histogram.green) + ", blue " + mean(histogram.blue));
}

Json ToJson(const std::string& given, const Histogram& histogram) {
  Json object;
  PutPath(object, "path", given);
  object["red"] = histogram.red;
  object["green"] = histogram.green;
  object["blue"] = histogram.blue;
  object["combined"] = histogram.combined;
  object["pixelCount"] = histogram.pixelCount;
  return object;
}

/// A file that cannot be read is told of; its object has the reason and nothing counted.
Json CountOne(const std::string& given, const HistogramJob& job, RunState& state) {
  try {
    const auto histogram = Count(given, job);
    if (!state.json) PrintMeans(given, histogram);
    return ToJson(given, histogram);
  } catch (const platform::UserError& error) {
    state.Fail(error.what());
    auto object = ToJson(given, {});
    object["message"] = JsonText(error.what());
    return object;
  }
}

}  // namespace

void AddHistogramCommand(CLI::App& program, RunState& state) {
  struct Arguments {
    std::vector<std::string> files;
    std::string box;
  };
  auto* command = program.add_subcommand("histogram", "Count the levels of images, fitted into a box");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("files", arguments->files, "Images")->required();
  AddBoxOption(*command, arguments->box);
  command->callback([arguments, &state] {
    const auto limits = ParseBox(arguments->box);
    state.action = [arguments, limits, &state] {
      const HistogramJob job{limits,
                             options::ImageFileOptionsOf(state.settings),
                             {.highQuality = state.settings.display.highQualityMode != 0}};
      auto result = Json::array();
      for (const auto& file : arguments->files) {
        if (state.stop.stop_requested()) break;
        auto object = CountOne(file, job, state);
        if (state.json) result.push_back(std::move(object));
      }
      if (state.json) PrintJson(result);
      if (state.stop.stop_requested()) throw platform::Cancelled();
    };
  });
}

}  // namespace ml::cli
