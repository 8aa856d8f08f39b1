#include "imagefiles/edits/jpeg_edits.h"

#include <gtest/gtest.h>

#include "imagefiles/edits/jpeg_thumbnail.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/jpeg/jpeg_encoder.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/exif_block.h"
#include "platform/text.h"
#include "support/avi_builder.h"
#include "support/fault_sweep.h"
#include "support/jpeg_builder.h"
#include "support/refusal.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using test::Refusal;
using test::TiffBuilder;

const std::string kDate = "2003:05:17 10:11:12";

TiffBuilder Camera(int commentSize, int descriptionSize) {
  TiffBuilder exif, first;
  exif.Ascii(36867, kDate);
  if (commentSize > 0) exif.Undefined(37510, std::string(static_cast<std::size_t>(commentSize), '\0'));
  if (descriptionSize > 0) first.Ascii(270, std::string(static_cast<std::size_t>(descriptionSize) - 1, ' '));
  return first.Short(274, 8).Ascii(306, kDate).Directory(34665, exif);
}

class JpegEdits : public testing::Test {
 protected:
  JpegEdits() : photo_(test::EncodeJpeg(test::PaintLandscape(400, 300, 1))) {}

  std::string Write(const std::string& name, const TiffBuilder& tiff, const std::string& segments = "") {
    return dir_.Write(name, test::InsertSegments(photo_, test::ExifSegment(tiff) + segments));
  }
  std::string Comment(const std::string& path, const std::string& text) {
    return Refusal([&] { SetComment(*Open(path), text, tools_); });
  }
  std::unique_ptr<ImageFile> Open(const std::string& path) {
    return std::make_unique<ImageFile>(RowOf(Format::Jpeg), path, options_);
  }
  /// What stands behind the headers.
  std::string Data(const std::string& path) {
    const auto file = *test::ReadAll(path);
    const metadata::MemorySource source(platform::AsBytes(file));
    return file.substr(metadata::CompressedData(source).position);
  }
  /// The first thumbnail's picture.
  imaging::DecodedPicture Thumbnail(const std::string& path) {
    const auto file = *test::ReadAll(path);
    const metadata::MemorySource source(platform::AsBytes(file));
    const auto places = metadata::FindExifThumbnails(source);
    if (places.empty()) return {};
    return imaging::DecodeJpeg(
        source, places[0], [](int, int) { return 8; }, imaging::PixelOrder::Rgb);
  }

  test::TempDir dir_;
  std::string photo_;
  ImageFileOptions options_;
  CompanionFinder companions_{options_};
  EditTools tools_{options_, companions_, {.stateDirectory = dir_ / "state"}};
};

TEST_F(JpegEdits, CommentGoesWhereThereIsAFieldAndBringsAThumbnail) {
  struct Case {
    int comment, description;
    std::string text, shown, refusal = {};
  };
  const std::string tooLong = "Comment is too long for the EXIF ImageDescription field";
  const std::string none = "JPEG does not contain an EXIF UserComment or ImageDescription field";
  const Case cases[] = {
      {20, 20, "Twelve chars", "Twelve chars"},
      {20, 0, "A comment that is cut", "A comment th"},
      {0, 20, "exactly 19 in there", "exactly 19 in there"},
      {0, 20, "it is 20 that is one", "", tooLong},
      {8, 20, "no room beside a code", "", tooLong},
      {0, 0, "nowhere", "", none},
  };
  for (const auto& c : cases) {
    const auto path = Write("a.jpg", Camera(c.comment, c.description));
    const auto before = *test::ReadAll(path);
    const auto data = Data(path);
    EXPECT_EQ(Comment(path, c.text), c.refusal) << c.text;
    EXPECT_EQ(Open(path)->GetComment(), c.shown);
    EXPECT_EQ(Data(path), data);
    if (!c.refusal.empty()) {
      EXPECT_EQ(*test::ReadAll(path), before);
      continue;
    }
    EXPECT_EQ(Open(path)->Exif().orientation, 8) << "as it was";
    const auto thumbnail = Thumbnail(path);
    EXPECT_EQ(thumbnail.fullWidth, 160);
    EXPECT_EQ(thumbnail.fullHeight, 120);
  }
  EXPECT_EQ(Comment(dir_.Write("bare.jpg", photo_), "nowhere"), none);
}

TEST_F(JpegEdits, CaptionMakesUpForAMissingField) {
  options_.iptcComments = true;
  const auto caption = [&](const std::string& path) {
    const auto file = Open(path);
    const auto& items = file->Exif().iptc;
    const auto found = std::ranges::find(items, 120, &metadata::IptcItem::dataset);
    return found == items.end() ? "none" : found->value;
  };
  const auto path = Write("a.jpg", Camera(20, 0));
  EXPECT_EQ(Comment(path, "Both, but one is cut"), "");
  EXPECT_EQ(Open(path)->GetExifComment(), "Both, but on");
  EXPECT_EQ(caption(path), "Both, but one is cut");
  EXPECT_EQ(Comment(path, ""), "");
  EXPECT_EQ(caption(path), "none");
  const auto bare = dir_.Write("bare.jpg", photo_);
  EXPECT_EQ(Comment(bare, "The caption alone"), "");
  EXPECT_EQ(caption(bare), "The caption alone");
  // Without a whole header nothing can be put in.
  EXPECT_EQ(Comment(dir_.Write("cut.jpg", photo_.substr(0, 30)), "x"),
            "JPEG does not contain an EXIF UserComment or ImageDescription field");
  const auto cut = test::InsertSegments(photo_, test::ExifSegment(Camera(20, 0)));
  const auto cutPath = dir_.Write("cut.jpg", cut.substr(0, cut.size() - photo_.size() + 50));
  EXPECT_EQ(Comment(cutPath, "x"), "Error writing comment in IPTC caption");
}

TEST_F(JpegEdits, AFileThatIsGoneIsReadOnly) {
  EXPECT_EQ(Comment(dir_ / "missing.jpg", "text"), "Unable to add comment because image is read-only");
  EXPECT_EQ(Refusal([&] { RegenerateThumbnail(*Open(dir_ / "missing.jpg"), tools_); }),
            "Unable to regenerate thumbnail because image is read-only");
}

TEST_F(JpegEdits, DatesMoveTogetherByTheShootingTime) {
  const auto path = Write("a.jpg", Camera(0, 0));
  const auto data = Data(path);
  AdjustDateTime(*Open(path), 86'400 * 20 + 61, tools_);
  EXPECT_EQ(Open(path)->Exif().dateTime, "2003:06:06 10:12:13");
  AdjustDateTime(*Open(path), -(86'400 * 20 + 61), tools_);
  EXPECT_EQ(*test::ReadAll(path), test::InsertSegments(photo_, test::ExifSegment(Camera(0, 0))));

  const auto thm = Write("b.thm", Camera(0, 0));
  const auto avi = dir_.Write("b.avi", test::EncodeAvi({test::PaintPlain(32, 16, 0)}));
  const auto movie = *test::ReadAll(avi);
  AdjustDateTime(*CreateImageFile(avi, options_), 60, tools_);
  EXPECT_EQ(Open(thm)->Exif().dateTime, "2003:05:17 10:12:12");
  EXPECT_EQ(*test::ReadAll(avi), movie);

  const auto undated = Write("c.jpg", TiffBuilder().Ascii(306, "0000:00:00 00:00:00"));
  const auto before = *test::ReadAll(undated);
  AdjustDateTime(*Open(undated), 60, tools_);
  EXPECT_EQ(*test::ReadAll(undated), before) << "no date is better than that of the last copy";
}

TEST_F(JpegEdits, ThumbnailShowsThePictureAsItLies) {
  const auto tall = test::EncodeJpeg(test::PaintPlain(100, 300, 0x3264c8));
  const auto path = dir_.Write("a.jpg", test::InsertSegments(tall, test::ExifSegment(Camera(0, 0))));
  EXPECT_TRUE(RegenerateThumbnail(*Open(path), tools_));
  const auto picture = Thumbnail(path);
  EXPECT_EQ(picture.fullWidth, 53);
  EXPECT_EQ(picture.fullHeight, 160);
  EXPECT_NEAR(std::to_integer<int>(picture.pixels.Row(80)[3]), 0x32, 6);
  EXPECT_NEAR(std::to_integer<int>(picture.pixels.Row(80)[5]), 0xc8, 6);

  const auto small = dir_.Write(
      "s.jpg", test::InsertSegments(test::EncodeJpeg(test::PaintPlain(20, 10, 0)), test::ExifSegment(Camera(0, 0))));
  EXPECT_TRUE(RegenerateThumbnail(*Open(small), tools_));
  EXPECT_EQ(Thumbnail(small).fullWidth, 20) << "never enlarged";

  // A description that goes on in a further segment would end in the new bytes.
  const auto split = Write("split.jpg", Camera(0, 0).Raw(270, 2, 500, 60),
                           test::JpegSegment(0xe1, std::string_view("Exif\0\0more", 10)));
  const auto before = *test::ReadAll(split);
  EXPECT_FALSE(RegenerateThumbnail(*Open(split), tools_));
  EXPECT_EQ(*test::ReadAll(split), before);

  const auto bare = dir_.Write("bare.jpg", photo_);
  EXPECT_EQ(Refusal([&] { RegenerateThumbnail(*Open(bare), tools_); }),
            "Unable to regenerate thumbnail of:\n" + bare + "\nNot EXIF");
  const auto whole = test::InsertSegments(photo_, test::ExifSegment(Camera(20, 0)));
  const auto cut = dir_.Write("cut.jpg", whole.substr(0, whole.size() - 500));
  EXPECT_EQ(Refusal([&] { RegenerateThumbnail(*Open(cut), tools_); }),
            "Unable to regenerate thumbnail of:\n" + cut + "\nThe picture is damaged");
  EXPECT_EQ(Comment(cut, "still"), "") << "the comment does not depend on it";
  EXPECT_TRUE(Thumbnail(cut).pixels.Empty());
}

TEST_F(JpegEdits, TakeOverOfMetadataKeepsWhatBelongsToThePicture) {
  const auto source = Write("source.jpg", Camera(20, 0));
  ASSERT_EQ(Comment(source, "of source"), "");
  const metadata::ExifData exif(source);
  const auto withComment = Camera(30, 0).Without(274).Short(274, 6);
  for (const std::string name : {"t.jpg", "t.thm"}) {
    const auto target = Write(name, withComment);
    const bool isThm = name == "t.thm";
    ASSERT_EQ(Comment(target, "of target"), "");
    const auto data = Data(target);
    WriteExifBlock(*Open(target), exif, 0, tools_);
    EXPECT_EQ(Open(target)->GetComment(), isThm ? "of target" : "of source");
    EXPECT_EQ(Open(target)->Exif().orientation, 6);
    EXPECT_EQ(Open(target)->Exif().dateTime, kDate);
    EXPECT_EQ(Data(target), data);
    EXPECT_EQ(Thumbnail(target).fullWidth, 160);
  }
  // A record without a block of its own still has something to say.
  metadata::ExifData record;
  record.make = "Tarnwick";
  record.iptc = {{2, 120, "A caption"}};
  const auto target = dir_.Write("bare.jpg", photo_);
  WriteExifBlock(*Open(target), record, 0, tools_);
  EXPECT_EQ(Open(target)->Exif().make, "Tarnwick");
  EXPECT_EQ(Open(target)->Exif().iptc, record.iptc);
}

TEST_F(JpegEdits, CommentIsWholeUnderEveryFault) {
  options_.iptcComments = true;
  const auto path = Write("a.jpg", Camera(20, 0));
  const auto before = *test::ReadAll(path);
  EXPECT_EQ(Comment(path, "new"), "");
  const auto after = *test::ReadAll(path);
  for (const auto fault : test::kFaults) {
    test::SweepFaults(
        fault, [&] { dir_.Write("a.jpg", before); },
        [&](platform::FileSystem& fileSystem) {
          EditTools tools{options_, companions_, {.stateDirectory = dir_ / "state", .fileSystem = &fileSystem}};
          SetComment(*Open(path), "new", tools);
        },
        [&](test::Outcome outcome) {
          const auto now = *test::ReadAll(path);
          if (now == after || (outcome != test::Outcome::Done && now == before)) return;
          // A picture that could not be read for the moment costs its thumbnail, no more.
          EXPECT_EQ(fault, test::Fault::Eio);
          EXPECT_TRUE(Thumbnail(path).pixels.Empty());
          EXPECT_EQ(Open(path)->GetExifComment(), "new");
          EXPECT_EQ(Open(path)->Exif().iptc.size(), 1U);
        });
  }
}

}  // namespace
}  // namespace ml::imagefiles
