#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "cli/box_option.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "cli/output_file.h"
#include "cli/progress_line.h"
#include "cli/run_state.h"
#include "imagefiles/display_colour.h"
#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "imaging/png/png_writer.h"
#include "options/engine_options.h"
#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/paths.h"

/// thumb and preview: one picture of each file, written as PNG.
namespace ml::cli {
namespace {

struct ImageArguments {
  std::vector<std::string> files;
  std::string out;
  ExistingFileOptions existing;
};

struct Picture {
  imaging::PixelBuffer pixels;
  const char* source = "full";
};

/// How a command makes its pictures.
struct PictureMaker {
  std::function<Picture(const std::string& path)> make;
  imaging::PngColour colour = imaging::PngColour::Rgb;
};

void AddImageArguments(CLI::App& command, ImageArguments& arguments) {
  command.add_option("files", arguments.files, "Images")->required();
  command.add_option("--out", arguments.out, "Directory for the pictures")->required();
  AddExistingFileOptions(command, arguments.existing);
}

void PrintResult(const std::string& given, const OutputFile& output, const Picture& picture) {
  const auto size = std::to_string(picture.pixels.width) + " x " + std::to_string(picture.pixels.height);
  const char* verb = output.result == WriteResult::Written ? " -> " : " (not written) -> ";
  PrintLine(given + verb + output.path + ", " + size + ", from " + picture.source);
}

/// One file: its object for JSON. Failures, also of a library or of memory, are told and leave "output" null.
Json MakeOne(const std::string& given, OutputFiles& outputs, const PictureMaker& maker, RunState& state) {
  Json object;
  PutPath(object, "path", given);
  object["output"] = nullptr;
  object["width"] = 0;
  object["height"] = 0;
  object["source"] = nullptr;
  try {
    const auto path = platform::AbsolutePath(given);
    const auto name = std::string(platform::FileName(path)) + ".png";
    const auto output = outputs.Choose(name, path);
    if (output.result == WriteResult::Skipped || output.result == WriteResult::Refused) return object;
    const auto picture = maker.make(path);
    outputs.Write(output, imaging::EncodePng(picture.pixels, maker.colour));
    PutPath(object, "output", output.path);
    object["width"] = picture.pixels.width;
    object["height"] = picture.pixels.height;
    object["source"] = picture.source;
    if (!state.json) PrintResult(given, output, picture);
  } catch (const platform::UserError& error) {
    object["message"] = JsonText(error.what());
    state.Fail(error.what());
  } catch (const std::exception& error) {
    object["message"] = JsonText(error.what());
    state.Fail(given + ": " + error.what());
  }
  return object;
}

void MakeAll(const ImageArguments& arguments, const PictureMaker& maker, RunState& state) {
  if (!arguments.existing.dryRun) platform::ensureDirectory(arguments.out);
  auto result = Json::array();
  ProgressLine progress(static_cast<int>(arguments.files.size()));
  OutputFiles outputs(arguments.out, arguments.existing, state);
  for (const auto& file : arguments.files) {
    if (state.stop.stop_requested()) break;
    progress.Next(file);
    result.push_back(MakeOne(file, outputs, maker, state));
  }
  progress.Clear();
  if (state.json) PrintJson(result);
  if (result.size() < arguments.files.size()) throw platform::Cancelled();
}

}  // namespace

void AddThumbCommand(CLI::App& program, RunState& state) {
  struct Arguments : ImageArguments {
    int size = 160;
  };
  auto* command = program.add_subcommand("thumb", "Write the thumbnails of images as PNG files");
  auto arguments = std::make_shared<Arguments>();
  AddImageArguments(*command, *arguments);
  command->add_option("--size", arguments->size, "Edge of the box in pixels")->required()->check(CLI::Range(1, 16384));
  command->callback([arguments, &state] {
    state.action = [arguments, &state] {
      const auto options = options::ImageFileOptionsOf(state.settings);
      const auto colour = options::ColourOptionsOf(state.settings);
      const auto make = [&](const std::string& path) {
        auto thumbnail = imagefiles::MakeThumbnail(path, arguments->size, options);
        imagefiles::ColourManageThumbnail(thumbnail.pixels, path, colour);
        return Picture{std::move(thumbnail.pixels), imagefiles::PictureSourceName(thumbnail.source)};
      };
      MakeAll(*arguments, {make, imaging::PngColour::Rgb}, state);
    };
  });
}

void AddPreviewCommand(CLI::App& program, RunState& state) {
  struct Arguments : ImageArguments {
    std::string box;
    bool grey = false;
  };
  auto* command = program.add_subcommand("preview", "Write images, fitted into a box, as PNG files");
  auto arguments = std::make_shared<Arguments>();
  AddImageArguments(*command, *arguments);
  AddBoxOption(*command, arguments->box);
  command->add_flag("--grey", arguments->grey, "In black and white");
  command->callback([arguments, &state] {
    const auto limits = ParseBox(arguments->box);
    state.action = [arguments, limits, &state] {
      const auto options = options::ImageFileOptionsOf(state.settings);
      const auto colour = options::ColourOptionsOf(state.settings);
      const imagefiles::BitmapQuality quality{.highQuality = state.settings.display.highQualityMode != 0,
                                              .greyscale = arguments->grey};
      const auto make = [&](const std::string& path) {
        const auto image = imagefiles::CreateImageFile(path, options);
        if (!image) throw platform::UserError(path + ": does not exist, or is no image that can be shown");
        auto pixels = image->GetBitmap(limits, quality);
        if (!arguments->grey) imagefiles::ColourManagePicture(pixels, *image, colour);
        return Picture{std::move(pixels), imagefiles::PictureSourceName(image->Source())};
      };
      MakeAll(*arguments, {make, arguments->grey ? imaging::PngColour::Grey : imaging::PngColour::Rgb}, state);
    };
  });
}

}  // namespace ml::cli
