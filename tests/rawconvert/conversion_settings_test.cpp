#include <gtest/gtest.h>

#include "metadata/exif_data.h"
#include "platform/errors.h"
#include "rawconvert/as_shot_labels.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/capabilities.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/libraw/as_shot_look.h"
#include "rawconvert/model_support.h"
#include "rawconvert/normalise_settings.h"
#include "rawconvert/value_tables.h"

namespace ml::rawconvert {
namespace {

metadata::ExifData Exif(const std::string& model) {
  metadata::ExifData exif;
  exif.make = "Canon";
  exif.model = model;
  return exif;
}

CameraFamily Family(const std::string& model, const std::string& path = "a.crw") { return FamilyOf(path, Exif(model)); }

std::string Flags(const CameraFamily& f) {
  std::string text;
  const auto add = [&](bool flag, const char* name) { text += flag ? std::string(" ") + name : ""; };
  add(f.isNef, "nef");
  add(f.isEos1D, "1d");
  add(f.isEos1Ds, "1ds");
  add(f.isD60, "d60");
  add(f.is10D, "10d");
  add(f.hasPhotoEffects, "effects");
  add(f.is8BitOnly, "8bit");
  return text;
}

TEST(CameraFamily, IsToldByModelAndExtension) {
  struct Case {
    const char *path, *model, *flags;
  };
  for (const auto& c : std::initializer_list<Case>{{"a.NEF", "NIKON D1", " nef"},
                                                   {"a.crw", "canon eos d60", " d60"},
                                                   {"a.crw", "Canon EOS 10D", " 10d"},
                                                   {"a.crw", "EOS 10D", ""},  // not at the start
                                                   {"a.crw", "Canon EOS DIGITAL REBEL", " 10d"},
                                                   {"a.crw", "Canon EOS Kiss Digital", " 10d"},
                                                   {"a.crw", "Canon PowerShot S50", " effects"},
                                                   {"a.crw", "Canon PowerShot S500", ""},
                                                   {"a.crw", "PowerShot G1", " 8bit"},  // at any place
                                                   {"a.crw", "Canon PowerShot Pro90 IS", " 8bit"},
                                                   {"a.tif", "CANON EOS-1DS", " 1ds"},
                                                   {"a.crw", "Canon PowerShot G2", ""}}) {
    EXPECT_EQ(Flags(Family(c.model, c.path)), c.flags) << c.model;
  }
  EXPECT_FALSE(FamilyOf("a.crw", Exif("Canon EOS Kiss II"), FamilyTest::Preview).is10D);
  EXPECT_TRUE(FamilyOf("a.crw", Exif("Canon EOS Kiss II")).is10D);
}

TEST(Normalising, FitsValuesToTheFamily) {
  struct Case {
    const char* model;
    RawDialogValues before, after;
  };
  const auto values = [](int contrast, int sharpness, int tone, int exposure = 0) {
    return RawDialogValues{
        .contrast = contrast, .sharpness = sharpness, .tone = tone, .exposureCompensation = exposure};
  };
  for (const auto& c : std::initializer_list<Case>{{"Canon EOS 10D", values(2, 3, 2, 21), values(2, 3, 2, 20)},
                                                   {"Canon EOS D60", values(2, 3, 2, -30), values(1, 3, kAsShot, -20)},
                                                   {"Canon EOS D60", values(kAsShot, -2, -1), values(kAsShot, -1, -1)},
                                                   {"Canon EOS D30", values(-2, 3, 0), values(-1, -1, kAsShot)}}) {
    RawConversionSettings settings;
    auto shown = c.before;
    NormaliseForDialog(settings, shown, Family(c.model), ConversionDialog::Other, Exif(c.model));
    EXPECT_EQ(shown, c.after) << c.model;
  }
}

TEST(Normalising, BoxNoiseAndFileTemperature) {
  auto exif = Exif("Canon EOS-1D");
  exif.imageWidth = 1648;
  exif.imageHeight = 2464;
  struct Case {
    const char* whiteBalance;
    ConversionDialog dialog;
    int kelvin;
  };
  for (const auto& c : std::initializer_list<Case>{{"Color temp=2800K", ConversionDialog::Eos1D, 2800},
                                                   {"Color temp=10001K", ConversionDialog::Eos1D, 5800},
                                                   {"Color temp=2799K", ConversionDialog::Eos1D, 5800},
                                                   {"Color temp=5000K", ConversionDialog::Other, 5800},
                                                   {"Auto", ConversionDialog::Eos1D, 5800}}) {
    exif.whiteBalance = c.whiteBalance;
    RawConversionSettings settings{.resizeWidth = 800, .resizeHeight = 0, .noiseBlending = 60};
    RawDialogValues values;
    NormaliseForDialog(settings, values, Family("Canon EOS-1D"), c.dialog, exif);
    EXPECT_EQ(settings.colourTemperature1D, c.kelvin) << c.whiteBalance;
    EXPECT_EQ(settings.resizeWidth, 2464);
    EXPECT_EQ(settings.resizeHeight, 2464);
    EXPECT_EQ(settings.noiseBlending, 75);
  }
}

TEST(Normalising, Numbers) {
  struct Case {
    int given, result;
  };
  for (const auto& c : std::initializer_list<Case>{{2849, 2800},
                                                   {2850, 2800},
                                                   {2851, 2900},
                                                   {12000, 10000},
                                                   {-5, 2800},
                                                   {2147483647, 10000},
                                                   {5000, 5000},
                                                   {4951, 5000}}) {
    EXPECT_EQ(NormaliseColourTemperature(c.given), c.result) << c.given;
  }
  for (const auto& c : std::initializer_list<Case>{{29, 0}, {30, 50}, {59, 50}, {79, 75}, {80, 95}}) {
    EXPECT_EQ(SnapNoiseBlending(c.given), c.result) << c.given;
  }
}

TEST(Capabilities, ControlsByMethodAndEffect) {
  struct Case {
    const char* model;
    Method method;
    int effect, fileEffect;
    EnabledControls enabled;
  };
  for (const auto& c : std::initializer_list<Case>{
           {"Canon EOS D30", Method::Normal, 4, 0, {true, true, true, true}},  // knows no effects
           {"Canon EOS D30", Method::Combined, 0, 0, {true, true, true, false}},
           {"Canon EOS D30", Method::Linear, 0, 0, {true, false, false, false}},
           {"Canon PowerShot G3", Method::Normal, 0, 0, {true, false, false, false}},
           {"Canon PowerShot G3", Method::Normal, -1, 5, {false, false, false, false}},
           {"Canon PowerShot G3", Method::Normal, 6, 4, {true, true, true, true}},
           {"Canon EOS-1Ds", Method::Normal, 0, 0, {true, false, false, false}}}) {
    auto exif = Exif(c.model);
    exif.pictureEffectCode = c.fileEffect;
    EXPECT_EQ(EnabledBy(Family(c.model), c.method, c.effect, exif), c.enabled) << c.model << c.effect;
  }
}

TEST(PhotoEffects, TakeThePlaceOfLevelsOnCamerasThatHaveThem) {
  struct Case {
    const char* model;
    int effect, shot;
    double contrast;
    PictureLook::Colours colours;
  };
  using enum PictureLook::Colours;
  for (const auto& c : std::initializer_list<Case>{{"Canon PowerShot G3", 0, 4, 0, All},
                                                   {"Canon PowerShot G3", 6, 0, 1, All},
                                                   {"Canon PowerShot G3", 5, 0, 0, Grey},
                                                   {"Canon PowerShot G3", -1, 4, 0, Sepia},
                                                   {"Canon PowerShot G2", 0, 4, 1, All},
                                                   {"Canon PowerShot G2", 5, 0, 1, All},
                                                   {"Canon PowerShot G2", -1, 4, 0, Sepia}}) {
    metadata::ExifData exif;
    exif.model = c.model;
    exif.pictureEffectCode = c.shot;
    RawDevelopParams params;
    params.SetContrast(1);
    params.SetPhotoEffect(c.effect);
    const auto look = LookOf(params, exif, FamilyOf("a.crw", exif));
    EXPECT_EQ(look.contrast, c.contrast) << c.model << c.effect;
    EXPECT_EQ(look.colours, c.colours) << c.model << c.effect;
  }
}

std::vector<int> Values(std::span<const ValueRow> rows) {
  std::vector<int> values;
  for (const auto& row : rows) values.push_back(row.value);
  return values;
}

TEST(Capabilities, ListsByFamily) {
  const auto other = CapabilitiesOf(Family("Canon EOS D30"));
  EXPECT_EQ(Values(other.contrast), (std::vector{kAsShot, -1, 0, 1}));
  EXPECT_EQ(Values(other.whiteBalance), (std::vector{kAsShot, 0, 1, 2, 3, 4, 14, 5, 6}));
  const auto nef = CapabilitiesOf(Family("NIKON D1", "a.nef"));
  EXPECT_TRUE(nef.contrast.empty());
  EXPECT_EQ(nef.saturation.size(), 4U);
  EXPECT_EQ(LabelOf(nef.whiteBalance, 6), "Incandescent");
  const auto slr = CapabilitiesOf(Family("Canon EOS 10D"));
  EXPECT_EQ(LabelOf(slr.contrast, 2), "High2");
  EXPECT_EQ(LabelOf(slr.sharpness, kNoSharpening), "No sharpening");
  EXPECT_EQ(LabelOf(slr.whiteBalance, 14), "");
  const auto d60 = CapabilitiesOf(Family("Canon EOS D60"));
  EXPECT_EQ(LabelOf(d60.contrast, 2), "");
  EXPECT_EQ(LabelOf(d60.tone, -1), "Red");
  EXPECT_EQ(LabelOf(CapabilitiesOf(Family("Canon PowerShot G2")).sharpness, kNoSharpening), "");
  EXPECT_FALSE(CapabilitiesOf(Family("Canon EOS-1Ds", "a.tif")).combined);
  EXPECT_EQ(CustomPointLabel({12, 340}), "Custom [12,340]");
}

TEST(AsShotLabels, TellWhatTheFileSays) {
  auto exif = Exif("Canon EOS-1D");
  EXPECT_EQ(AsShotWhiteBalance(exif), "As shot");
  exif.whiteBalance = "Color temp=5200K";
  exif.sharpnessLevel = "Very strong";
  exif.sharpnessPattern = "Very fine";
  exif.colorMatrix = 4;
  EXPECT_EQ(AsShotWhiteBalance(exif), "As shot (CT:5200K)");
  EXPECT_EQ(AsShotSharpening(exif), "As shot (V. strong) (V. fine)");
  EXPECT_EQ(AsShotColourMatrix(exif), "As shot (matrix 4)");
  EXPECT_EQ(CompactDialogTitle10D("Canon EOS 10D"), "EOS 10D Conversion Settings");
}

TEST(EightBitWarning, OnlyWhereMoreIsAskedThanTheCameraGives) {
  const auto g1 = Family("Canon PowerShot G1");
  EXPECT_TRUE(NeedsEightBitWarning(g1, 2, Method::Normal));
  EXPECT_TRUE(NeedsEightBitWarning(g1, 0, Method::Combined));
  EXPECT_FALSE(NeedsEightBitWarning(g1, 5, Method::Normal));
  EXPECT_FALSE(NeedsEightBitWarning(Family("Canon PowerShot G2"), 6, Method::Linear));
}

TEST(DevelopErrors, HaveTheirSentences) {
  struct Case {
    std::uint32_t code;
    const char* complaint;
  };
  for (const auto& c : std::initializer_list<Case>{{0x5000002, "Raw file is invalid and cannot be converted\n"},
                                                   {0x2D, "Raw file is invalid and cannot be converted\n"},
                                                   {0x1000007, "G2 raw file format not supported\n"},
                                                   {0x1000005, ""}}) {
    EXPECT_EQ(RawFileComplaint(c.code, "G2"), c.complaint);
  }
  EXPECT_TRUE(IsCancel(0x1000005) && IsCancel(0x5000005) && !IsCancel(5));
  EXPECT_EQ(PreviewComplaint(0x5000002),
            "psCException developing image: 0x5000002\nRaw file is invalid and cannot be converted.");
  struct Named {
    std::uint32_t code;
    const char* name;
  };
  for (const auto& c : std::initializer_list<Named>{{0x52, "Undefined CDSDK error"},
                                                    {0, "Undefined CDSDK error"},
                                                    {1, "cdUNIMPLEMENTED"},
                                                    {0x8D, "cdDEVICE_NOT_RELEASED"},
                                                    {0xF3, "cdINVALID_ID"}}) {
    EXPECT_EQ(CameraImageErrorText(c.code), c.name);
  }
}

TEST(DevelopErrors, UnknownCamerasAreRefusedByName) {
  EXPECT_NO_THROW(RequireConvertible(Exif("Canon EOS D60")));
  try {
    RequireConvertible(Exif("Canon EOS 20D"));
    FAIL();
  } catch (const platform::UserError& error) {
    EXPECT_STREQ(error.what(), "Sorry, Canon EOS 20D raw conversion\nis not supported in this release.");
  }
}

}  // namespace
}  // namespace ml::rawconvert
