#include "imaging/psd/psd_decoder.h"

#include <gtest/gtest.h>

#include "imaging/decoding.h"
#include "imaging/psd/psd_rows.h"
#include "support/indexed_picture.h"
#include "support/psd_builder.h"

namespace ml::imaging {
namespace {

using test::EncodePsd;
using test::PsdColours;
using test::Samples;
using namespace std::string_literals;

struct Kind {
  const char* name;
  PsdColours colours;
  int bits;
  bool packBits;
};
std::string Expected(const test::Picture& picture, PsdColours colours) {
  if (colours == PsdColours::Rgb || colours == PsdColours::Cmyk) return picture.rgb;
  if (colours == PsdColours::Indexed) return test::ToIndexed(picture).Rgb();
  std::string out;
  for (std::size_t at = 1; at < picture.rgb.size(); at += 3) out.append(3, picture.rgb[at]);
  return out;
}

TEST(DecodePsd, GivesEverySampleOfEveryKind) {
  const auto picture = test::PaintLandscape(39, 21, 6);
  for (const auto& kind :
       {Kind{"Rgb", PsdColours::Rgb, 8, false}, Kind{"RgbPacked", PsdColours::Rgb, 8, true},
        Kind{"RgbPacked16", PsdColours::Rgb, 16, true}, Kind{"Grey16", PsdColours::Grey, 16, false},
        Kind{"GreyPacked", PsdColours::Grey, 8, true}, Kind{"IndexedPacked", PsdColours::Indexed, 8, true},
        Kind{"Cmyk16", PsdColours::Cmyk, 16, false}, Kind{"CmykPacked", PsdColours::Cmyk, 8, true}}) {
    SCOPED_TRACE(kind.name);
    const auto bytes = EncodePsd(picture, {.colours = kind.colours,
                                           .bits = kind.bits,
                                           .packBits = kind.packBits,
                                           .extraChannel = true,
                                           .resources = "8BIM"});
    const auto decoded = test::Decode(DecodePsd, bytes);
    test::ExpectSamples(decoded.pixels, Expected(picture, kind.colours));
    EXPECT_FALSE(decoded.damaged);
  }
}

/// One row of two pixels, with the sections before it empty.
std::string SmallPsd(const std::string& header, const std::string& picture, const std::string& sections = "") {
  return "8BPS" + header + (sections.empty() ? std::string(12, '\0') : sections) + picture;
}

TEST(DecodePsd, BlackDarkensTheOtherInks) {
  const auto decoded = test::Decode(
      DecodePsd, SmallPsd("\0\1\0\0\0\0\0\0\0\4\0\0\0\1\0\0\0\2\0\x08\0\4"s, "\0\0\xff\x80\x40\x80\0\x80\xff\x80"s));
  EXPECT_EQ(Samples(decoded.pixels), "\xff\x40\0\x40\x40\x40"s);
}

TEST(DecodePsd, LargeDocumentsHaveLongerLengths) {
  const auto header = "\0\2\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\2\0\x08\0\1"s;
  const auto decoded = test::Decode(DecodePsd, SmallPsd(header, "\0\1\0\0\0\2\xff\x63"s, std::string(16, '\0')));
  EXPECT_EQ(Samples(decoded.pixels), "cccccc");
}

TEST(UnpackBits, RunsLiteralsAndCuts) {
  const auto unpack = [](const std::string& packed, std::size_t room) {
    std::string out(room, '.');
    const auto count = UnpackBits(std::as_bytes(std::span(packed)), std::as_writable_bytes(std::span(out)));
    return std::to_string(count) + out;
  };
  EXPECT_EQ(unpack("\xfe"
                   "a\1bc\x80\0d"s,
                   6),
            "6aaabcd");
  EXPECT_EQ(unpack("\x81z"s, 200), "128" + std::string(128, 'z') + std::string(72, '.'));
  EXPECT_EQ(unpack("\xfe"
                   "a"s,
                   2),
            "2aa")
      << "a run too long";
  EXPECT_EQ(unpack("\5abc"s, 6), "3abc...") << "a literal cut short";
  EXPECT_EQ(unpack("\xfe"s, 3), "0...");
}

TEST(DecodePsd, ShowsWhatIsThereOfATruncatedFile) {
  const auto picture = test::PaintLandscape(40, 30, 6);
  for (const bool packBits : {false, true}) {
    const auto bytes = EncodePsd(picture, {.packBits = packBits});
    const auto cut = test::Decode(DecodePsd, bytes.substr(0, bytes.size() - 5));
    EXPECT_TRUE(cut.damaged);
    EXPECT_EQ(test::PixelAt(cut.pixels, 39, 28)[2], static_cast<unsigned char>(picture.rgb[(40 * 28 + 39) * 3 + 2]));
    EXPECT_EQ(test::PixelAt(cut.pixels, 0, 29)[2], 128) << "the last row of blue is not whole";
    EXPECT_GT(test::SweepPrefixes(DecodePsd, bytes, bytes.size(), 61), 20);
  }
}

TEST(DecodePsd, RefusesWithAReason) {
  const auto refuse = [](const std::string& header, const std::string& picture = "\0\0\1\2"s) {
    return test::Refusal(DecodePsd, SmallPsd(header, picture));
  };
  EXPECT_EQ(test::Refusal(DecodePsd, "8BPX" + std::string(40, '\0')), "Not a PSD file");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\2\0\x08\0\x09"s), "The colour mode of the picture is not read");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\2\0\x20\0\1"s), "The bit depth of the picture is not read");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\2\0\0\0\1\0\0\0\2\0\x08\0\3"s), "Channels are missing");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\1\0\0\x4e\x20\0\0\x4e\x20\0\x08\0\1"s), "The picture is too large");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\2\0\x08\0\1"s), "The picture has no pixels");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\2\0\x08\0\1"s, "\0\2ab"s),
            "The compression of the picture is not read");
  EXPECT_EQ(refuse("\0\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\2\0\x08\0\1"s, "\0\0a"s), "The file ends before its picture");
}

}  // namespace
}  // namespace ml::imaging
