#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/output_file.h"
#include "cli/run_state.h"
#include "imaging/pixel_buffer.h"
#include "imaging/png/png_encoder.h"

namespace ml::cli {

/// Which images, and where their pictures go.
struct PictureRun {
  std::vector<std::string> files;
  std::string directory;
  ExistingFileOptions existing;
};

struct MadePicture {
  imaging::PixelBuffer pixels;
  const char* source = "full";  ///< where it came from, see imagefiles::PictureSourceName
};

/// How a command makes its pictures.
struct PictureMaker {
  std::function<MadePicture(const std::string& path)> make;  ///< safe on `threads` threads at once
  imaging::PngColour colour = imaging::PngColour::Rgb;
  int threads = 1;
};

/// Makes a PNG file of each image and tells of each in the order given: a line, or an object of the array that ends
/// the run. A file that fails is told of and leaves "output" null. Throws Cancelled after a stop request, UserError
/// if the pictures have no directory or cannot be made lasting.
void MakePictures(const PictureRun& run, const PictureMaker& maker, RunState& state);

}  // namespace ml::cli
