#include "rawconvert/convert_raw_file.h"

#include <thread>
#include <utility>

#include "imagefiles/metadata_blocks_of.h"
#include "imagefiles/thumbnail_maker.h"
#include "imagefiles/turned_jpeg.h"
#include "imaging/operators/noise_filter.h"
#include "imaging/operators/sharpen_luma.h"
#include "imaging/scale.h"
#include "metadata/exif_data.h"
#include "metadata/value_text.h"
#include "platform/errors.h"
#include "platform/numbers.h"
#include "rawconvert/develop_raw_file.h"
#include "rawconvert/messages.h"
#include "rawconvert/pass_progress.h"
#include "rawconvert/post_process.h"

namespace ml::rawconvert {
namespace {

/// Edge of the picture that shows what is being converted.
constexpr int kShownEdge = 160;

void ShowSource(const std::string& source, const ConversionOptions& options, platform::Progress& progress) {
  try {
    auto small = imagefiles::MakeThumbnail(source, kShownEdge, options.files).pixels;
    auto rgb = imaging::MakePixelBuffer(small.width, small.height);
    for (int y = 0; y < small.height; ++y) {
      for (int x = 0; x < small.width; ++x) {
        for (int i = 0; i < 3; ++i) rgb.Row(y)[3 * x + i] = small.Row(y)[3 * x + 2 - i];
      }
    }
    progress.picture(rgb.data, rgb.width, rgb.height);
  } catch (const platform::UserError&) {
    progress.picture({}, 0, 0);  // a file without a preview can be developed all the same
  }
}

double Seconds(const std::string& shutter) {
  const auto time = metadata::ReadShutterText(shutter);
  return time.fraction > 0 ? 1.0 / time.fraction : time.seconds;
}

void ReduceNoise(imaging::PixelBuffer& pixels, const imaging::CSmNR& filter, const metadata::ExifData& exif,
                 PassProgress& progress, const std::stop_token& stop) {
  if (!filter.Active()) return;
  progress.NextPass();
  progress.text(messages::kReducingNoise);
  filter.Process(pixels, {.iso = platform::LeadingInteger(exif.iso), .exposureSeconds = Seconds(exif.shutterSpeed)},
                 progress, stop);
}

void CheckStop(const std::stop_token& stop) {
  if (stop.stop_requested()) throw platform::Cancelled();
}

/// Resolution that goes into the file. Kept: that of the resizing also where nothing is post-processed.
int ResolutionOf(const RawConversionSettings& settings, const ConversionOptions& options) {
  const bool measured = settings.resize != 0 && settings.resizeUnits != ResizeUnits::Pixels;
  return measured ? settings.resizeDpi : options.resolution;
}

}  // namespace

std::optional<ConvertedPicture> ConvertPicture(const std::string& source, RawConversionSettings& settings,
                                               const ConversionOptions& options, const ConversionTools& tools) {
  const metadata::ExifData exif(source, options.files.ForExif());
  const auto& format = FactsOf(options.format);
  ShowSource(source, options, tools.progress);

  PassProgress progress(tools.progress);
  imaging::CSmNR noiseFilter;
  noiseFilter.SetBlending(settings.noiseBlending);
  if (noiseFilter.Active()) progress.AddPass();
  if (MakesTwoRenders(FamilyOf(source, exif), settings.method)) progress.AddPass();
  progress.percent(0);
  progress.text(messages::kConverting);

  const bool postProcesses = PostProcesses(settings);
  const DepthWish depth{.work16 = postProcesses || format.bits16 || settings.method != Method::Normal,
                        .output16 = format.bits16};
  auto developed = DevelopRawFile(source, exif, settings, depth, {tools.developer, progress, tools.stop});
  if (!developed) return std::nullopt;
  auto& pixels = developed->pixels;
  const int bytesPerSample = developed->bits16 ? 2 : 1;

  ReduceNoise(pixels, noiseFilter, exif, progress, tools.stop);
  if (const auto turn = imagefiles::TurnOfShot(exif); turn != imaging::Turn::None)
    pixels = imaging::Turned(pixels, turn);
  if (postProcesses) PostProcess(pixels, settings, bytesPerSample, progress, tools.stop);
  if (postProcesses && settings.sharpen != 0 && settings.sharpenMethod == SharpenMethod::HqStyle) {
    CheckStop(tools.stop);
    progress.text(messages::kHqSharpening);
    imaging::ApplyHqSharpen(pixels, settings.hqSharpenAmount, tools.stop);
  }
  CheckStop(tools.stop);
  if (bytesPerSample == 1) pixels = imaging::HighBytes(std::move(pixels));

  const auto& profile = settings.method == Method::Linear ? options.linearProfile : options.normalProfile;
  return ConvertedPicture{.pixels = std::move(pixels),
                          .blocks = imagefiles::ReadMetadataBlocks(source, profile, options.files, options.locale),
                          .format = format.written,
                          .quality = options.quality,
                          .resolution = ResolutionOf(settings, options)};
}

void WriteConverted(const ConvertedPicture& picture, const std::string& destination, const std::stop_token& stop) {
  CheckStop(stop);
  imaging::WriteImage(picture.format, picture.pixels, picture.blocks, destination,
                      {.quality = picture.quality,
                       .resolution = picture.resolution,
                       .threads = static_cast<int>(std::thread::hardware_concurrency()),
                       .stop = stop});
}

}  // namespace ml::rawconvert
