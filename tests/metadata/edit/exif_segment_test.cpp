#include "metadata/edit/exif_segment.h"

#include <gtest/gtest.h>

#include <functional>

#include "../exif_files.h"
#include "../memory.h"
#include "metadata/edit/exif_comment_writer.h"
#include "metadata/edit/exif_thumbnail.h"
#include "metadata/exif_data.h"
#include "metadata/exif_reader.h"
#include "metadata/messages.h"
#include "platform/text.h"
#include "support/byte_string.h"
#include "support/refusal.h"

namespace ml::metadata {
namespace {

using test::BytesOf;
using test::Endian;
using test::Refusal;
using test::TiffBuilder;

/// From the length field on.
ExifSegment SegmentOf(const TiffBuilder& tiff, const std::string& behind = "") {
  return ExifSegment(BytesOf(test::ExifSegment(tiff).substr(2) + behind));
}

std::string Tiff(const ExifSegment& segment) { return std::string(segment.Tiff().Text(0, segment.Tiff().Size())); }

ExifData Read(const ExifSegment& segment) {
  ExifData data;
  ReadExifBlock(data, segment.Data());
  return data;
}

/// What the directories give as the thumbnail.
std::string Thumbnail(const ExifSegment& segment) {
  const auto& thumbnail = segment.Layout().thumbnail;
  return thumbnail ? std::string(segment.Tiff().Text(thumbnail->range.position, thumbnail->range.size)) : "none";
}

ThumbnailMaker Sized(std::function<std::size_t(int)> sizeOf) {
  return [sizeOf](int quality) { return std::vector<std::byte>(sizeOf(quality), std::byte('T')); };
}
ThumbnailMaker Sized(std::size_t size) {
  return Sized([size](int) { return size; });
}

TiffBuilder WithThumbnail(Endian order, const std::string& thumbnail) {
  auto tiff = test::CameraExif(order);
  return tiff.Next(TiffBuilder(order).Short(259, 6).Pieces(513, 514, {thumbnail}));
}

TEST(ExifSegment, TellsWhyItIsNone) {
  const std::string good = test::ExifSegment(test::CameraExif()).substr(2);
  const auto with = [&](std::size_t at, const std::string& bytes) {
    return std::string(good).replace(at, bytes.size(), bytes);
  };
  const std::pair<std::string, std::string> cases[] = {
      {good, ""},
      {good.substr(0, 15), "Too small"},
      {with(2, "Exit"), "Not EXIF"},
      {with(8, "IM"), "Alignment invalid"},
      {with(10, "+"), "No EXIF tag"},
  };
  for (const auto& [bytes, reason] : cases) {
    EXPECT_EQ(Refusal([&] { ExifSegment(BytesOf(bytes)); }), reason);
  }
}

TEST(ExifSegment, RefusesNumbersBehindItsEnd) {
  auto segment = SegmentOf(test::CameraExif());
  const auto size = segment.Tiff().Size();
  EXPECT_EQ(Refusal([&] { segment.readShort(size - 1); }), "Overflow in readShort()");
  EXPECT_EQ(Refusal([&] { segment.readLong(size - 3); }), "Overflow in readLong()");
  EXPECT_EQ(Refusal([&] { segment.writeShort(size - 1, 1); }), "Overflow in writeShort()");
  EXPECT_EQ(Refusal([&] { segment.writeLong(~std::uint64_t{0}, 1); }), "Overflow in writeLong()");
  segment.writeLong(size - 4, 0x01020304);
  EXPECT_EQ(segment.readLong(size - 4), 0x01020304U);
}

TEST(ExifComment, KeepsTheSizeOfItsField) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    auto segment = SegmentOf(test::CameraExif(order));  // a comment of 11 bytes, a description of 16
    const auto before = segment.Data().size();
    const std::pair<std::string, std::string> cases[] = {
        {"Short", "Short"},
        {"Just eleven", "Just eleven"},
        {"Longer than that", "Longer than"},
        {"Ten bytes \xc3\xab", "Ten bytes"},  // never half a character
        {"", ""},
    };
    for (const auto& [text, shown] : cases) {
      EXPECT_FALSE(WriteExifComment(segment, text));
      EXPECT_EQ(platform::TrimRight(Read(segment).comment), shown);
      EXPECT_EQ(segment.Data().size(), before);
    }
    EXPECT_EQ(Read(segment).imageDescription, "A description");
  }
}

TEST(ExifComment, GoesIntoTheDescriptionWhereItFits) {
  const auto described = [](const std::string& text) {
    return SegmentOf(TiffBuilder().Ascii(270, text).Short(274, 1));
  };
  auto segment = described(std::string(19, ' '));
  EXPECT_EQ(WriteExifComment(segment, std::string(20, 'x')).value_or(""),
            "Comment is too long for the EXIF ImageDescription field");
  EXPECT_EQ(Tiff(segment), Tiff(described(std::string(19, ' '))));
  EXPECT_FALSE(WriteExifComment(segment, std::string(19, 'x')));
  EXPECT_EQ(Read(segment).imageDescription, std::string(19, 'x'));

  auto tiny = described("abc");  // stands in its entry
  EXPECT_FALSE(WriteExifComment(tiny, "xy"));
  EXPECT_EQ(Tiff(tiny), Tiff(SegmentOf(TiffBuilder().Data(270, 2, 4, std::string("xy\0\0", 4)).Short(274, 1))));

  auto bare = SegmentOf(TiffBuilder().Short(274, 1).Short(282, {1, 2, 3}));
  EXPECT_EQ(WriteExifComment(bare, "x").value_or(""),
            "JPEG does not contain an EXIF UserComment or ImageDescription field");
}

TEST(ExifComment, LeavesAloneWhatIsSomethingElse) {
  const auto writes = [](const TiffBuilder& exif) {
    auto segment = SegmentOf(TiffBuilder().Ascii(270, "A long description").Directory(34665, exif), "0123456789");
    return WriteExifComment(segment, "x").value_or("").empty();
  };
  EXPECT_TRUE(writes(TiffBuilder().Undefined(37510, std::string(20, '\0'))));
  EXPECT_FALSE(writes(TiffBuilder().Raw(37510, 7, 20, 0))) << "the header";
  EXPECT_FALSE(writes(TiffBuilder().Raw(37510, 7, 20, 8))) << "the first directory";
  EXPECT_TRUE(writes(TiffBuilder().Raw(37510, 7, 20, 0xfffffff0))) << "outside: the description is used";
}

TEST(ExifComment, LeavesAloneWhatACutNoteReachesInto) {
  const auto note = std::string("Nikon\0\2\0\0\0", 10) +
                    TiffBuilder().Ascii(1, "The first text").Ascii(2, "A second, longer text").Build();
  // The note ends in front of its last text, as its entry tells; the comment stands where it is told.
  const auto blockOf = [&](std::size_t comment) {
    const auto exif = TiffBuilder().Undefined(37500, note).Raw(37510, 7, 20, static_cast<std::uint32_t>(comment));
    auto block = test::ExifSegment(TiffBuilder().Directory(34665, exif)).substr(2) + std::string(20, '\0');
    const auto size = block.find("A second") - block.find("Nikon");
    const auto count = block.find(std::string("\x7c\x92\x07\0", 4)) + 4;
    return block.replace(count, 4, std::string{static_cast<char>(size), 0, 0, 0});
  };
  const auto draft = blockOf(0);
  const auto writes = [&](std::size_t place) {
    ExifSegment segment(BytesOf(blockOf(place - kExifSegmentHead)));
    return !WriteExifComment(segment, "x").has_value();
  };
  EXPECT_FALSE(writes(draft.find("A second") + 4));
  EXPECT_TRUE(writes(draft.size() - 20));
}

TEST(Thumbnail, TakesThePlaceOfTheOldOne) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    auto segment = SegmentOf(WithThumbnail(order, std::string(1000, 't')), std::string(4, '\0'));
    const auto size = segment.Data().size();
    const auto head = Tiff(segment).substr(0, segment.Layout().thumbnail->range.position);

    ASSERT_TRUE(ReplaceThumbnail(segment, Sized(700)));
    EXPECT_EQ(Thumbnail(segment), std::string(700, 'T'));
    EXPECT_EQ(segment.Data().size(), size) << "no byte of the file has to move";
    EXPECT_EQ(Tiff(segment).substr(Tiff(segment).rfind('T') + 1), std::string(304, '\0'));
    ASSERT_TRUE(ReplaceThumbnail(segment, Sized(1004)));
    EXPECT_EQ(segment.Data().size(), size) << "the fill is room";
    ASSERT_TRUE(ReplaceThumbnail(segment, Sized(1500)));
    EXPECT_EQ(segment.Data().size(), size + 496);
    EXPECT_EQ(Thumbnail(segment), std::string(1500, 'T'));
    EXPECT_EQ(ByteView(segment.Data(), ByteOrder::Big).readShort(0), segment.Data().size());

    auto now = Tiff(segment).substr(0, head.size());
    const auto length = segment.Layout().thumbnail->lengthEntry.position + 8;
    now.replace(length, 4, head, length, 4);
    EXPECT_EQ(now, head) << "only the length differs";
  }
}

TEST(Thumbnail, GoesBehindWhatFollowsTheOldOne) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    auto segment = SegmentOf(WithThumbnail(order, std::string(100, 't')), "odd");
    const auto old = Tiff(segment);
    ASSERT_TRUE(ReplaceThumbnail(segment, Sized(100)));
    EXPECT_EQ(segment.Data().size(), old.size() + kExifSegmentHead) << "as large as the old one";
    ASSERT_TRUE(ReplaceThumbnail(segment, Sized(101)));
    EXPECT_EQ(Thumbnail(segment), std::string(101, 'T'));
    EXPECT_EQ(segment.Layout().thumbnail->range.position % 2, 0U);
    EXPECT_EQ(Tiff(segment).substr(old.find(std::string(100, 't')) + 100, 3), "odd");
  }
}

TEST(Thumbnail, GetsADirectoryWhereThereIsNone) {
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const std::string behind : {"", "odd"}) {
      auto segment = SegmentOf(test::CameraExif(order), behind);
      const auto old = Tiff(segment);
      ASSERT_TRUE(ReplaceThumbnail(segment, Sized(300)));
      const auto even = (old.size() + 1) / 2 * 2;
      EXPECT_EQ(Tiff(segment).size(), even + 94 + 300);
      const auto directory = TiffBuilder(order)
                                 .Short(259, 6)
                                 .Rational(282, 72)
                                 .Rational(283, 72)
                                 .Short(296, 2)
                                 .Long(513, static_cast<std::uint32_t>(even + 94))
                                 .Long(514, 300)
                                 .BuildBehind(std::string(even, ' '));
      EXPECT_EQ(Tiff(segment).substr(even, 94), directory.substr(even, 94));
      EXPECT_EQ(Thumbnail(segment), std::string(300, 'T'));
      EXPECT_EQ(Read(segment).comment, "A comment  ");
    }
  }
}

TEST(Thumbnail, TakesTheBestQualityThatFits) {
  // The room is 65,520 bytes less all that is not the old thumbnail.
  const auto segmentOf = [] { return SegmentOf(WithThumbnail(Endian::Little, std::string(100, 't'))); };
  const auto room = segmentOf().ThumbnailRoom();
  EXPECT_EQ(room, 65'520 - segmentOf().Data().size() + 100);
  std::vector<int> asked;
  const auto fitsFrom = [&](int limit) {
    asked.clear();
    return Sized([&asked, limit, room](int quality) {
      asked.push_back(quality);
      return quality <= limit ? room : room + 1;
    });
  };
  auto segment = segmentOf();
  EXPECT_TRUE(ReplaceThumbnail(segment, fitsFrom(80)));
  EXPECT_EQ(asked, (std::vector<int>{90, 85, 80}));
  EXPECT_EQ(segment.Data().size(), 65'520U);

  auto full = segmentOf();
  EXPECT_FALSE(ReplaceThumbnail(full, fitsFrom(49)));
  EXPECT_EQ(asked.back(), 50);
  EXPECT_EQ(Thumbnail(full), std::string(100, 't'));
  EXPECT_EQ(Tiff(full), Tiff(segmentOf()));

  auto crowded = SegmentOf(test::CameraExif(), std::string(64'900, 'x'));
  const auto before = Tiff(crowded);
  EXPECT_FALSE(ReplaceThumbnail(crowded, Sized(2000)));
  EXPECT_EQ(Tiff(crowded), before) << "no directory without its thumbnail";
}

TEST(Thumbnail, NeverOverwritesADirectory) {
  for (const std::uint32_t place : {0U, 4U, 8U, 60U, 0xffffffffU}) {
    const auto tiff = TiffBuilder()
                          .Short(274, 1)
                          .Ascii(306, "2004:01:02 03:04:05")
                          .Next(TiffBuilder().Long(513, place).Long(514, 40));
    auto segment = SegmentOf(tiff);
    const auto old = Tiff(segment);
    ReplaceThumbnail(segment, Sized(30));
    EXPECT_EQ(Read(segment).dateTime, "2004:01:02 03:04:05") << place;
    EXPECT_EQ(Tiff(segment).substr(0, 60), old.substr(0, 60)) << place;
  }
  auto broken = SegmentOf(TiffBuilder().Short(274, 1).Raw(34665, 4, 1, 0x7fffffff));
  EXPECT_FALSE(ReplaceThumbnail(broken, Sized(30))) << "nobody knows what the lost directory used";
}

}  // namespace
}  // namespace ml::metadata
