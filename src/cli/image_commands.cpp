#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "cli/box_option.h"
#include "cli/commands.h"
#include "cli/output_file.h"
#include "cli/picture_run.h"
#include "cli/run_state.h"
#include "imagefiles/display_colour.h"
#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "imaging/png/png_encoder.h"
#include "options/engine_options.h"
#include "platform/errors.h"

/// thumb and preview: one picture of each file, written as PNG.
namespace ml::cli {
namespace {

void AddImageArguments(CLI::App& command, PictureRun& run) {
  command.add_option("files", run.files, "Images")->required();
  command.add_option("--out", run.directory, "Directory for the pictures")->required();
  AddExistingFileOptions(command, run.existing);
}

}  // namespace

void AddThumbCommand(CLI::App& program, RunState& state) {
  struct Arguments : PictureRun {
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
        return MadePicture{std::move(thumbnail.pixels), imagefiles::PictureSourceName(thumbnail.source)};
      };
      const int threads = static_cast<int>(std::thread::hardware_concurrency());
      MakePictures(*arguments, {make, imaging::PngColour::Rgb, threads}, state);
    };
  });
}

void AddPreviewCommand(CLI::App& program, RunState& state) {
  struct Arguments : PictureRun {
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
        return MadePicture{std::move(pixels), imagefiles::PictureSourceName(image->Source())};
      };
      // On one thread: decoding whole images takes memory, and some decoders use several processors themselves.
      MakePictures(*arguments, {make, arguments->grey ? imaging::PngColour::Grey : imaging::PngColour::Rgb, 1}, state);
    };
  });
}

}  // namespace ml::cli
