#include <gtest/gtest.h>

#include <functional>

#include "../exif_files.h"
#include "../memory.h"
#include "metadata/edit/exif_block_writer.h"
#include "metadata/edit/exif_dates_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/edit/multi_picture.h"
#include "metadata/edit/orientation_writer.h"
#include "metadata/exif_block.h"
#include "metadata/exif_data.h"
#include "metadata/exif_reader.h"
#include "platform/errors.h"
#include "support/byte_string.h"
#include "support/small_files.h"
#include "support/truncation_sweep.h"

namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

const std::string kJfif = test::JpegSegment(0xe0, std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));
const std::string kFrame = test::JpegSegment(0xc0, std::string("\x08\x01\xe0\x02\x80\x01\x01\x11\x00", 9));
/// With what looks like markers among the data, and more behind the end of the picture.
const std::string kPicture = test::JpegSegment(0xda, "scan") + "data\xff\xe1 Exif\xff\xd9 and a trailer\xff\xd8";

std::string Jpeg(const std::string& segments) { return "\xff\xd8" + segments + kFrame + kPicture; }

using Edit = std::function<void(EditedFile&)>;
std::string After(const std::string& file, const Edit& edit) {
  const auto source = SourceOf(file);
  EditedFile edited(source);
  edit(edited);
  RequireSameImageData(edited, JpegRest);
  return TextOf(edited);
}

ExifData Read(const std::string& jpeg) {
  ExifData data;
  ReadJpegSegments(data, SourceOf(jpeg));
  return data;
}

std::vector<std::byte> BlockOf(const TiffBuilder& tiff) { return test::BytesOf(test::ExifSegment(tiff).substr(2)); }

std::vector<std::byte> SmallThumbnail(int) { return std::vector<std::byte>(200, std::byte('T')); }

TEST(ExifSegmentPlace, IsBehindApp0AndTheOnlyOne) {
  const auto exif = test::ExifSegment(test::CameraExif()), other = test::ExifSegment(TiffBuilder().Short(274, 3));
  const auto xmp = test::XmpSegment("<x/>"), comment = test::CommentSegment("A comment");
  const ExifSegment segment(BlockOf(test::CameraExif()));
  const std::pair<std::string, std::string> cases[] = {
      {"", exif},
      {kJfif, kJfif + exif},
      {kJfif + other, kJfif + exif},
      {other + kJfif + xmp, exif + kJfif + xmp},
      {kJfif + xmp + other + comment + other, kJfif + exif + xmp + comment},
      {xmp + comment, exif + xmp + comment},
      {kJfif + kJfif + other + other + kJfif, kJfif + kJfif + exif + kJfif},
  };
  for (const auto& [before, after] : cases) {
    EXPECT_EQ(After(Jpeg(before), [&](EditedFile& jpeg) { PlaceExifSegment(jpeg, segment); }), Jpeg(after));
  }
  // Without a picture, or with segments behind odd bytes, the rest stays as it is.
  for (const auto& rest : {std::string(), std::string("\xff\xd9"), "odd" + other, std::string("\xff\xe1\0\1", 4)}) {
    const auto placed = After("\xff\xd8" + kJfif + rest, [&](EditedFile& jpeg) { PlaceExifSegment(jpeg, segment); });
    EXPECT_EQ(placed, "\xff\xd8" + kJfif + exif + rest);
  }
  EXPECT_THROW(After("GIF89a", [&](EditedFile& jpeg) { PlaceExifSegment(jpeg, segment); }), platform::UserError);
}

TEST(JpegSegmentBuilder, HoldsWhatASegmentCan) {
  EXPECT_EQ(TextOf(BuildJpegSegment(0xe1, std::vector<std::byte>(65'533))).substr(0, 4), "\xff\xe1\xff\xff");
  EXPECT_THROW(BuildJpegSegment(0xe1, std::vector<std::byte>(65'534)), platform::UserError);
}

TEST(ExifDates, AreReplacedInPlace) {
  const std::string text = "2010:11:12 13:14:15";
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto jpeg = Jpeg(kJfif + test::ExifSegment(test::CameraExif(order)));
    const auto after = After(jpeg, [&](EditedFile& file) { WriteJpegDates(file, text); });
    auto expected = jpeg;
    for (const std::string old : {"2003:05:17 10:11:12", "2003:05:17 10:11:13", "2004:01:02 03:04:05"}) {
      expected.replace(expected.find(old), old.size(), text);
    }
    EXPECT_EQ(after, expected);
  }
  // A file of its own, behind something else.
  const auto tiff = "head" + test::CameraExif().Build();
  const auto source = SourceOf(tiff);
  EditedFile edited(source);
  WriteExifDates(edited, 4, text);
  const auto after = TextOf(edited);
  EXPECT_NE(after.find(text), std::string::npos);
  EXPECT_EQ(after.find("2003:05:17"), std::string::npos);
}

TEST(ExifDates, LeaveAloneWhatIsNotOne) {
  const std::string text = "2010:11:12 13:14:15", date = "2003:05:17 10:11:12";
  const auto changes = [&](const TiffBuilder& tiff, const std::string& newText) {
    const auto jpeg = Jpeg(test::ExifSegment(tiff));
    return After(jpeg, [&](EditedFile& file) { WriteJpegDates(file, newText); }) != jpeg;
  };
  EXPECT_TRUE(changes(TiffBuilder().Ascii(306, date), text));
  EXPECT_TRUE(changes(TiffBuilder().Data(306, 2, 20, std::string(20, '\0')), text)) << "not set";
  EXPECT_FALSE(changes(TiffBuilder().Ascii(306, date), text.substr(1))) << "18 characters";
  EXPECT_FALSE(changes(TiffBuilder().Ascii(306, date), text + "0"));
  EXPECT_FALSE(changes(TiffBuilder().Data(306, 2, 19, date), text));
  EXPECT_FALSE(changes(TiffBuilder().Data(306, 7, 20, date + " "), text));
  EXPECT_FALSE(changes(TiffBuilder().Ascii(305, date), text));
  EXPECT_FALSE(changes(TiffBuilder().Data(306, 2, 20, "\xff\xd9 binary data \x01 ..."), text));
  EXPECT_FALSE(changes(TiffBuilder().Raw(306, 2, 20, 0), text)) << "the header";
  // Outside of the segment, where the picture is.
  EXPECT_THROW(changes(TiffBuilder().Ascii(305, date).Raw(306, 2, 20, 60), text), ExifException);
  EXPECT_THROW(changes(TiffBuilder().Raw(306, 2, 20, 0xfffffff0), text), ExifException);
  EXPECT_THROW(changes(TiffBuilder().Ascii(306, date).Raw(34665, 4, 1, 0x10000), text), ExifException);
}

TEST(Orientation, IsWrittenIntoTheFirstTag) {
  const std::pair<int, std::uint32_t> values[] = {{0, 1}, {90, 6}, {180, 3}, {270, 8}, {45, 1}};
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto chained = TiffBuilder(order).Ascii(271, "M").Next(TiffBuilder(order).Short(274, 2).Short(296, 2));
    for (const auto& tiff : {test::CameraExif(order), chained, TiffBuilder(order).Long(274, 6).Short(296, 2)}) {
      const auto jpeg = Jpeg(test::ExifSegment(TiffBuilder(order).Short(296, 2)) + test::ExifSegment(tiff));
      for (const auto& [degrees, value] : values) {
        const auto after =
            After(jpeg, [&, d = degrees](EditedFile& file) { EXPECT_TRUE(WriteOrientationToExif(file, d)); });
        EXPECT_EQ(after.size(), jpeg.size());
        EXPECT_EQ(NumberIn(*FindExifOrientation(SourceOf(after))), value);
        const auto undo = [&](EditedFile& file) {
          OverwriteNumber(file, *FindExifOrientation(file), NumberIn(*FindExifOrientation(SourceOf(jpeg))));
        };
        EXPECT_EQ(After(after, undo), jpeg) << "nothing else changed";
        EXPECT_EQ(ReadOrientationFromExif(SourceOf(after)), DegreesOfOrientation(value));
      }
    }
  }
  for (const auto& none : {Jpeg(""), Jpeg(test::ExifSegment(TiffBuilder().Rational(274, 6))),
                           Jpeg(test::ExifSegment(TiffBuilder().Ascii(271, "M")))}) {
    EXPECT_EQ(After(none, [](EditedFile& file) { EXPECT_FALSE(WriteOrientationToExif(file, 90)); }), none);
  }
}

/// The number, or the numerator, of a tag in the first or the EXIF directory.
std::uint32_t NumberOf(const std::string& jpeg, int tag) {
  const auto exif = ReadExifSegment(SourceOf(jpeg));
  const MemorySource source(exif->Tiff().Bytes());
  IfdWalker walker(source, exif->Tiff().Order(), {.followNext = false});
  std::uint32_t value = 0;
  const IfdVisitor keep = [&](const IfdEntry& entry) {
    if (entry.tag == tag) value = entry.Is(IfdType::Rational) ? exif->readLong(entry.value) : entry.value;
    return Visit::Continue;
  };
  walker.Walk(exif->readLong(4),
              [&](const IfdEntry& entry) { return entry.tag == 34665 ? walker.Walk(entry.value, keep) : keep(entry); });
  return value;
}

TEST(ExifBlock, IsMadeToFitItsNewPicture) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    const auto camera = [&](const std::string& make, int orientation) {
      return test::CameraExif(order)
          .Without(271)
          .Without(274)
          .Ascii(271, make)
          .Short(274, orientation)
          .Rational(282, 72)
          .Rational(283, 72)
          .Short(296, 3);
    };
    const auto put = [&](const std::string& make, const std::string& segments, std::uint32_t resolution) {
      return After(Jpeg(segments), [&](EditedFile& jpeg) {
        WriteExifBlock(jpeg, BlockOf(camera(make, 6)), resolution, SmallThumbnail);
      });
    };
    const auto plain = put("Canon", kJfif, 300);
    EXPECT_EQ(NumberOf(plain, 274), 1U) << "the target stands upright";
    EXPECT_EQ(NumberOf(plain, 282), 300U);
    EXPECT_EQ(NumberOf(plain, 296), 2U);
    EXPECT_EQ(NumberOf(plain, 40962), 640U);
    EXPECT_EQ(NumberOf(plain, 40963), 480U);
    EXPECT_EQ(Read(plain).comment, "A comment  ");
    ASSERT_TRUE(ReadExifSegment(SourceOf(plain))->HasThumbnail());

    const auto turned =
        put("Tarnwick", test::ExifSegment(camera("Other", 7)) + test::ExifSegment(camera("Third", 3)), 0);
    EXPECT_EQ(NumberOf(turned, 274), 7U) << "the target's, mirrored as it is";
    EXPECT_EQ(NumberOf(turned, 282), 72U);
    EXPECT_EQ(NumberOf(turned, 296), 3U);
    EXPECT_EQ(NumberOf(turned, 40962), 3072U);
    EXPECT_EQ(Read(turned).make, "Tarnwick");
    EXPECT_EQ(turned.find("Third"), std::string::npos);
  }
  EXPECT_THROW(After(Jpeg(""), [](EditedFile& jpeg) { WriteExifBlock(jpeg, {}, 0, nullptr); }), platform::UserError);
}

/// An index of two pictures, the second of which stands so far behind the index.
std::string MultiPictureSegment(Endian order, std::uint32_t size, std::uint32_t offset) {
  test::ByteString records(order);
  records.Long(0x30000).Long(size).Long(0).Long(0).Long(0).Long(100).Long(offset).Long(0);
  return test::JpegSegment(
      0xe2,
      std::string("MPF\0", 4) +
          TiffBuilder(order).Undefined(0xb000, "0100").Long(0xb001, 2).Undefined(0xb002, records.Bytes()).Build());
}

TEST(MultiPicture, OffsetsStayTrueWhereverSegmentsGrow) {
  const auto exif = test::ExifSegment(test::CameraExif());
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const bool indexFirst : {true, false}) {
      const auto file = [&](std::uint32_t size, std::uint32_t offset) {
        const auto index = MultiPictureSegment(order, size, offset);
        return Jpeg(indexFirst ? index + exif : exif + index) + "SECOND PICTURE";
      };
      const auto draft = file(1000, 1);
      const auto base = [](const std::string& jpeg) { return jpeg.find("MPF") + 4; };
      const auto offset = static_cast<std::uint32_t>(draft.find("SECOND") - base(draft));
      const auto after = After(file(1000, offset), [&](EditedFile& jpeg) {
        EXPECT_TRUE(WriteJpegThumbnail(jpeg, SmallThumbnail));
        RealignMultiPicture(jpeg);
      });
      const auto grown = static_cast<std::uint32_t>(after.size() - draft.size());
      const auto expected =
          MultiPictureSegment(order, 1000 + grown, static_cast<std::uint32_t>(after.find("SECOND") - base(after)));
      EXPECT_NE(after.find(expected), std::string::npos) << indexFirst;
      EXPECT_EQ(grown > 200, true);
    }
  }
}

TEST(JpegWriters, EndCleanlyOnWhatIsDamaged) {
  const auto edits = [](EditedFile& jpeg) {
    const Edit all[] = {
        [](EditedFile& e) { EXPECT_NE(WriteJpegComment(e, "A new comment", SmallThumbnail), ""); },
        [](EditedFile& e) { WriteJpegThumbnail(e, SmallThumbnail); },
        [](EditedFile& e) { WriteJpegDates(e, "2010:11:12 13:14:15"); },
        [](EditedFile& e) { WriteOrientationToExif(e, 90); },
        [](EditedFile& e) { WriteExifBlock(e, BlockOf(test::CameraExif()), 300, SmallThumbnail); },
        [](EditedFile& e) { RealignMultiPicture(e); },
    };
    for (const auto& edit : all) {
      const auto size = jpeg.Size();
      const bool touched = jpeg.Touched();
      try {
        edit(jpeg);
      } catch (const platform::UserError&) {
        EXPECT_TRUE(jpeg.Size() == size && jpeg.Touched() == touched) << "refused, but changed";
      } catch (ExifException) {
        continue;
      }
    }
    RequireSameImageData(jpeg, JpegRest);
  };
  auto files = test::MakerNoteFiles();
  files.push_back({"Plain", "plain.jpg",
                   Jpeg(kJfif +
                        test::ExifSegment(test::CameraExif().Next(
                            TiffBuilder().Short(259, 6).Pieces(513, 514, {std::string(90, 't')}))) +
                        MultiPictureSegment(Endian::Big, 500, 500))});
  for (const auto& file : files) {
    if (!file.file.ends_with(".jpg")) continue;
    for (std::size_t at = 0; at < std::min<std::size_t>(file.content.size(), 4000); ++at) {
      auto damaged = file.content;
      damaged[at] = static_cast<char>(damaged[at] ^ (at % 3 == 0 ? 0xff : 0x41));
      const auto source = SourceOf(damaged);
      EditedFile edited(source);
      test::ExpectEndsCleanly(at, [&] { edits(edited); });
    }
  }
}

}  // namespace
}  // namespace ml::metadata
