#include "rawconvert/convert_raw_file.h"

#include <algorithm>
#include <cstring>

#include "platform/errors.h"
#include "rawconvert/conversion_fixture.h"
#include "support/ciff_builder.h"

namespace ml::rawconvert {
namespace {

class ConvertRawFile : public ConversionTest {
 protected:
  /// A file of that camera, the picture of which comes from the developers of the test.
  std::string Crw(const std::string& model, int orientation = 1) {
    test::CameraRaw raw{.width = 64, .height = 48, .orientation = orientation, .make = "Canon", .model = model};
    return dir.Write("a.crw", test::CrwHeap(raw).BuildFile(test::Endian::Little));
  }
  std::optional<ConvertedPicture> Convert(const std::string& path, OutputFormat format) {
    ConversionOptions options;
    options.format = format;
    return ConvertPicture(path, settings, options, {developer, progress, stop.get_token()});
  }
};

constexpr char kD60[] = "Canon EOS D60";
constexpr char kG1[] = "Canon PowerShot G1";

TEST_F(ConvertRawFile, ChoosesTheDepthByFormatMethodAndProcessing) {
  struct Case {
    OutputFormat format;
    Method method;
    bool postProcess;
    const char* model;
    int developed, written;  ///< bytes a sample
  };
  const Case cases[] = {
      {OutputFormat::Jpeg, Method::Normal, false, kD60, 1, 1},
      {OutputFormat::Tiff16, Method::Normal, false, kD60, 2, 2},
      {OutputFormat::Jpeg, Method::Linear, false, kD60, 2, 1},
      {OutputFormat::Jpeg, Method::Normal, true, kD60, 2, 1},
      {OutputFormat::Png16, Method::Normal, true, kD60, 2, 2},
      {OutputFormat::Png16, Method::Normal, false, kG1, 2, 1},
      {OutputFormat::Png16, Method::Combined, true, kG1, 2, 1},
  };
  for (const auto& [format, method, postProcess, model, developed, written] : cases) {
    SCOPED_TRACE(std::string(model) + " " + std::to_string(static_cast<int>(format)));
    sdk->asked.clear();
    sdk->eightBitOnly = model == kG1;
    settings.method = method;
    settings.postProcess = postProcess;
    settings.adjustGamma = 1;
    const auto picture = Convert(Crw(model), format);
    ASSERT_TRUE(picture);
    ASSERT_EQ(sdk->asked.size(), 1u);
    EXPECT_EQ(sdk->asked[0].request.output, developed == 2 ? OutputCode::Bits16 : OutputCode::Bits8);
    EXPECT_EQ(sdk->asked[0].params.Linear(), method == Method::Linear);
    EXPECT_EQ(picture->pixels.bytesPerSample, written);
    if (written == 1 && developed == 2 && !postProcess && !sdk->eightBitOnly) {
      EXPECT_EQ(picture->pixels.Row(2)[9], std::byte{0x32});  // the high byte of x = 3, y = 2
    }
  }
}

TEST_F(ConvertRawFile, CombinesTwoRenders) {
  settings.method = Method::Combined;
  settings.develop.SetWhiteBalance(4);
  sdk->sample = [](const auto& asked, int, int, int) {
    return static_cast<std::uint16_t>(asked.params.Linear() ? 16384 : 65535);
  };
  const auto picture = Convert(Crw(kD60), OutputFormat::Tiff16);
  ASSERT_EQ(sdk->asked.size(), 2u);
  EXPECT_EQ(sdk->asked[0].params.Sharpness(), -1);
  EXPECT_EQ(sdk->asked[0].params.WhiteBalance(), 4);
  auto second = sdk->asked[0].params;
  second.SetLinear(true);
  second.SetWhiteBalance(-1);
  second.SetCoefficients(sdk->computed);
  EXPECT_EQ(sdk->asked[1].params, second);
  std::uint16_t sample = 0;
  std::memcpy(&sample, picture->pixels.data.data(), 2);
  EXPECT_EQ(sample, 65523);  // white lies five levels above the linear render's brightest value
  EXPECT_TRUE(std::ranges::is_sorted(progress.percents));
  const std::vector<std::string> steps = {"Converting raw file...", "Converting raw image for highlights...",
                                          "Combining images..."};
  EXPECT_EQ(progress.texts, steps);
}

TEST_F(ConvertRawFile, SendsWhatTheCameraKnows) {
  settings.develop.SetSharpness(kNoSharpening);
  settings.develop.SetExposureCompensation(-7);
  settings.falseColourFilter = 0;
  settings.photoEffect = 4;
  Convert(Crw(kD60), OutputFormat::Jpeg);
  EXPECT_EQ(sdk->asked.back().params.Sharpness(), kNoSharpening);
  EXPECT_EQ(sdk->asked.back().params.ExposureCompensation(), -7);
  EXPECT_FALSE(sdk->asked.back().params.FalseColourFilter());
  EXPECT_EQ(sdk->asked.back().params.PhotoEffect(), 4);
  Convert(Crw("Canon EOS D30"), OutputFormat::Jpeg);
  EXPECT_EQ(sdk->asked.back().params.Sharpness(), -1);
}

TEST_F(ConvertRawFile, CarriesTheWhiteBalanceOfTheFirstFileOn) {
  settings.sameWhiteBalance = 3;
  settings.develop.SetWhiteBalance(2);
  Convert(Crw(kD60), OutputFormat::Jpeg);
  Convert(Crw(kD60), OutputFormat::Jpeg);
  EXPECT_EQ(sdk->asked[0].params.WhiteBalance(), 2);
  EXPECT_EQ(sdk->asked[1].params.WhiteBalance(), -1);
  EXPECT_EQ(sdk->asked[1].params.Coefficients(), sdk->computed);
}

TEST_F(ConvertRawFile, TurnsAndResizesAndTellsTheResolution) {
  settings.postProcess = 1;
  settings.resize = 1;
  settings.resizeWidth = settings.resizeHeight = 4;
  settings.resizeUnits = ResizeUnits::Inches;
  settings.resizeDpi = 300;
  const auto path = Crw(kD60);
  auto picture = Convert(path, OutputFormat::Tiff8);
  EXPECT_EQ(picture->pixels.width, 4);
  EXPECT_EQ(picture->pixels.height, 3);
  EXPECT_EQ(picture->resolution, 300);
  settings.resizeUnits = ResizeUnits::Pixels;
  EXPECT_EQ(Convert(path, OutputFormat::Tiff8)->resolution, 180);
}

TEST_F(ConvertRawFile, FindsNoPictureInSilence) {
  sdk->missingFor = 2;
  EXPECT_FALSE(Convert(Crw(kD60), OutputFormat::Jpeg));
  sdk->missingFor = 1;
  EXPECT_TRUE(Convert(Crw(kD60), OutputFormat::Jpeg));
}

TEST_F(ConvertRawFile, WritesNothingOnceItIsCancelled) {
  const auto source = Crw(kD60);
  const auto target = dir.Write("out.jpg", "old");
  const auto picture = Convert(source, OutputFormat::Jpeg);
  ASSERT_TRUE(picture);
  stop.request_stop();
  EXPECT_THROW(WriteConverted(*picture, target, stop.get_token()), platform::Cancelled);
  EXPECT_THROW(Convert(source, OutputFormat::Jpeg), platform::Cancelled);
  EXPECT_EQ(test::ReadAll(target), "old");
}

}  // namespace
}  // namespace ml::rawconvert
