#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "../memory.h"
#include "metadata/edit/ifd_directory.h"
#include "metadata/edit/ifd_entry_writer.h"
#include "metadata/edit/iptc_tiff.h"
#include "metadata/edit/tiff_comment.h"
#include "metadata/edit/tiff_image_data.h"
#include "metadata/exif_reader.h"
#include "platform/text.h"
#include "support/metadata_blocks.h"
#include "support/tiff_builder.h"

namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

using namespace std::string_literals;

constexpr int kOrientation = 274, kIptc = 33723;
constexpr auto npos = std::string::npos;

/// Two directories, with a strip, a text and EXIF data with a note whose offsets count from the header.
TiffBuilder Camera(Endian order) {
  const auto note = TiffBuilder(order).Ascii(1, "a value of the maker's note");
  const auto exif = TiffBuilder(order)
                        .Ascii(36867, "2003:05:17 10:11:12")
                        .Note(37500, "Nikon\0\x01\0", note)
                        .Undefined(37510, std::string("ASCII\0\0\0an older comment   ", 27));
  return TiffBuilder(order)
      .Ascii(270, "A description")
      .Ascii(306, "2004:01:02 03:04:05")
      .Pieces(273, 279, {"pixels of a picture"})
      .Directory(34665, exif)
      .Next(TiffBuilder(order).Short(256, 160));
}

ExifData Read(const ByteSource& file, TiffMagic magic = TiffMagic::Required) {
  ExifData data;
  ReadTiffFile(data, file, 0, magic);
  return data;
}

class TiffWriter : public testing::TestWithParam<Endian> {};

TEST_P(TiffWriter, MovesTheDirectoryForANewEntryAndOverwritesThatOneLater) {
  const auto before = Camera(GetParam()).Build();
  const auto source = SourceOf(before);
  EditedFile file(source);
  const auto old = ReadFirstDirectory(file, 0, TiffMagic::Required);
  UpdateIfdEntry(file, {.tag = kOrientation, .value = 6});

  const auto moved = ReadFirstDirectory(file, 0, TiffMagic::Required);
  EXPECT_EQ(moved.position, before.size() + before.size() % 2);
  EXPECT_EQ(moved.next, old.next);
  EXPECT_EQ(moved.entries.size(), old.entries.size() + 1);
  EXPECT_TRUE(std::ranges::is_sorted(moved.entries, {}, &IfdEntry::tag));
  EXPECT_EQ(ReadTiffOrientation(file, 0), 6U);
  EXPECT_EQ(TextOf(file).substr(8, before.size() - 8), before.substr(8)) << "something but the pointer changed";
  EXPECT_NO_THROW(RequireSameImageData(file, 0, TiffMagic::Required));

  const auto size = file.Size();
  UpdateIfdEntry(file, {.tag = kOrientation, .value = 8});
  EXPECT_EQ(file.Size(), size);
  EXPECT_EQ(ReadTiffOrientation(file, 0), 8U);
  EXPECT_TRUE(OverwriteIfdNumber(file, 0, kOrientation, 3));
  EXPECT_EQ(ReadTiffOrientation(file, 0), 3U);
  EXPECT_FALSE(OverwriteIfdNumber(file, 0, 9999, 3));
  RemoveIfdEntry(file, kOrientation);
  EXPECT_EQ(ReadTiffOrientation(file, 0), std::nullopt);
  EXPECT_EQ(ReadFirstDirectory(file, 0, TiffMagic::Required).next, old.next);
}

struct IptcCase {
  const char* name;
  TiffBuilder (*add)(TiffBuilder tiff, const std::string& old);
  std::size_t valueSize;  ///< of the caption written
  bool grows;
  std::uint16_t type;
};

TEST_P(TiffWriter, IptcStaysWhereItFitsAndGoesToTheEndWhereNot) {
  const auto asLong = [](TiffBuilder tiff, const std::string& old) {
    return tiff.Data(kIptc, 4, static_cast<std::uint32_t>(old.size() / 4), old);
  };
  const auto asUndefined = [](TiffBuilder tiff, const std::string& old) { return tiff.Undefined(kIptc, old); };
  const auto twice = [](TiffBuilder tiff, const std::string& old) {
    return tiff.Undefined(kIptc, old).Undefined(kIptc, old);
  };
  const auto none = [](TiffBuilder tiff, const std::string&) { return tiff; };
  const IptcCase cases[] = {
      {"FitsLong", asLong, 5, false, 4},    {"FitsUndefined", asUndefined, 5, false, 7},
      {"LongerLong", asLong, 300, true, 4}, {"LongerUndefined", asUndefined, 300, true, 7},
      {"Twice", twice, 5, true, 7},         {"None", none, 5, true, 4},
  };
  const auto old = test::IptcBlock({{120, "An older caption of the picture"}, {90, "Kingston"}}) + "\0"s;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto before = c.add(Camera(GetParam()), old).Build();
    const auto source = SourceOf(before);
    EditedFile file(source);
    const std::string caption(c.valueSize, 'c');
    WriteTiffIptc(file, {.items = {{2, 120, caption}}});
    EXPECT_EQ(file.Size() > before.size(), c.grows);
    EXPECT_TRUE(file.InPlace());
    const auto directory = ReadFirstDirectory(file, 0, TiffMagic::Required);
    EXPECT_EQ(std::ranges::count(directory.entries, kIptc, &IfdEntry::tag), 1);
    const auto& entry = *directory.Find(kIptc);
    EXPECT_EQ(entry.type, c.type);
    EXPECT_EQ(entry.value % 2, 0U);
    const auto size = entry.count * (c.type == 4 ? 4 : 1);
    EXPECT_EQ(size, (5 + 2 + 5 + caption.size() + 3) / 4 * 4);
    const auto block = file.Read(entry.value, size);
    const auto items = ParseIptcBlock(ByteView(block, ByteOrder::Big), IptcCarrier::Bare).items;
    EXPECT_EQ(items, (std::vector<IptcItem>{{2, 120, caption}}));
  }
}

TEST_P(TiffWriter, IptcAtTheEndOfTheFileGrowsThereAndAnEmptyBlockGoes) {
  const auto before = Camera(GetParam()).Build();
  const auto source = SourceOf(before);
  EditedFile file(source);
  WriteTiffIptc(file, {.items = {{2, 120, "short"}}});
  const auto pointer = ReadFirstDirectory(file, 0, TiffMagic::Required).Find(kIptc)->value;
  // The directory came behind the data, so these have to move once; from then on they are the last.
  WriteTiffIptc(file, {.items = {{2, 120, std::string(200, 'a')}}});
  const auto place = ReadFirstDirectory(file, 0, TiffMagic::Required).Find(kIptc)->value;
  EXPECT_NE(place, pointer);
  WriteTiffIptc(file, {.items = {{2, 120, std::string(400, 'b')}}});
  EXPECT_EQ(ReadFirstDirectory(file, 0, TiffMagic::Required).Find(kIptc)->value, place);
  EXPECT_EQ(Read(file).iptc, (std::vector<IptcItem>{{2, 120, std::string(400, 'b')}}));

  WriteTiffIptc(file, {});
  EXPECT_EQ(ReadFirstDirectory(file, 0, TiffMagic::Required).Find(kIptc), nullptr);
  EXPECT_EQ(TextOf(file).find("bbbb"), npos) << "the old text can still be read in the file";
  EXPECT_EQ(Read(file).imageDescription, "A description");
}

TEST_P(TiffWriter, CommentFieldsKeepTheirSize) {
  struct Case {
    const char* name;
    std::size_t comment, description;  ///< sizes of the fields; 0: none
    std::string text;
    std::string inComment, inDescription;  ///< afterwards, without zeros
    bool written;
  };
  const std::string longText(1100, 'x');
  const Case cases[] = {
      {"Comment", 40, 20, "text", "text", "ddd", true},
      {"Smallest", 16, 20, "1234567890", "12345678", "ddd", true},
      {"TooSmall", 15, 20, "text", "ccc", "text", true},
      {"Largest", 1000, 20, longText, std::string(992, 'x'), "ddd", true},
      {"TooLarge", 1001, 20, "text", "ccc", "text", true},
      {"DescriptionFull", 0, 9, "1234567890", "", "123456789", true},
      {"NoSplitCharacter", 0, 9, "12345678\xc3\xa4", "", "12345678", true},
      {"DescriptionTooSmall", 0, 8, "text", "", "ddd", false},
      {"DescriptionTooLarge", 0, 1025, "text", "", "ddd", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TiffBuilder exif(GetParam()), tiff(GetParam());
    const auto filled = [](std::string start, std::size_t size) {
      start.resize(size);
      return start;
    };
    if (c.comment > 0) exif.Undefined(37510, filled("ASCII\0\0\0ccc"s, c.comment));
    if (c.description > 0) tiff.Ascii(270, filled("ddd", c.description - 1));
    const auto before = tiff.Directory(34665, exif.Short(40961, 1)).Build();
    const auto source = SourceOf(before);
    EditedFile file(source);
    EXPECT_EQ(WriteTiffComment(file, Read(file), c.text), c.written);
    EXPECT_EQ(file.Size(), before.size());
    EXPECT_EQ(file.Touched(), c.written);
    const auto read = Read(file);
    EXPECT_EQ(read.comment, c.inComment);
    EXPECT_EQ(read.imageDescription, c.inDescription);
  }
}

INSTANTIATE_TEST_SUITE_P(Orders, TiffWriter, testing::Values(Endian::Little, Endian::Big),
                         [](const auto& c) { return c.param == Endian::Little ? "Little" : "Big"; });

TEST(TiffWriters, AskForTheMagicUnlessToldOtherwise) {
  const auto orf = TiffBuilder().Short(256, 10).Magic(0x4f52).Build();
  const auto source = SourceOf(orf);
  EditedFile file(source);
  EXPECT_THROW(UpdateIfdEntry(file, {.tag = kOrientation, .value = 6}), ExifException);
  EXPECT_THROW(WriteTiffIptc(file, {.items = {{2, 120, "caption"}}}), ExifException);
  EXPECT_FALSE(file.Touched());
  UpdateIfdEntry(file, {.tag = kOrientation, .value = 6}, TiffMagic::Any);
  EXPECT_EQ(ReadTiffOrientation(file, 0, TiffMagic::Any), 6U);
}

/// A file of any size that holds nothing but its head.
class LongFile final : public ByteSource {
 public:
  LongFile(std::string head, std::uint64_t size) : head_(std::move(head)), size_(size) {}
  std::uint64_t Size() const override { return size_; }
  std::size_t ReadSome(std::uint64_t offset, std::span<std::byte> out) const override {
    std::size_t done = 0;
    for (; done < out.size() && offset + done < size_; ++done) {
      const auto at = offset + done;
      out[done] = at < head_.size() ? static_cast<std::byte>(head_[static_cast<std::size_t>(at)]) : std::byte{0};
    }
    return done;
  }

 private:
  std::string head_;
  std::uint64_t size_;
};

TEST(TiffWriters, GrowNoFileBeyondItsOffsets) {
  constexpr std::uint64_t limit = std::uint64_t{1} << 32;
  const auto head = TiffBuilder().Short(256, 10).Short(kOrientation, 1).Build();
  const IptcBlock block{.items = {{2, 120, "caption"}}};
  // Of 60 bytes there are enough for the data, but not for the directory behind them.
  for (const std::uint64_t room : {8, 24, 60}) {
    const LongFile source(head, limit - room);
    EditedFile file(source);
    if (room < 40) {
      EXPECT_THROW(UpdateIfdEntry(file, {.tag = 9999, .value = 6}), ExifException) << room;
    }
    EXPECT_THROW(WriteTiffIptc(file, block), ExifException) << room;
    EXPECT_FALSE(file.Touched());
    UpdateIfdEntry(file, {.tag = kOrientation, .value = 6});
    EXPECT_EQ(ReadTiffOrientation(file, 0), 6U);
  }
  const LongFile source(head, limit - 200);
  EditedFile file(source);
  WriteTiffIptc(file, block);
  EXPECT_EQ(Read(file).iptc, block.items);
}

TEST(TiffWriters, MakeNoDirectoryThatReadersWouldPassOver) {
  const IptcBlock block{.items = {{2, 120, "caption"}}};
  for (const int count : {69, 70, 71}) {
    TiffBuilder tiff;
    for (int i = 1; i < count; ++i) tiff.Short(1000 + i, i);
    for (const bool hasIptc : {false, true}) {
      SCOPED_TRACE(std::to_string(count) + (hasIptc ? " with data" : ""));
      const auto before = (hasIptc ? TiffBuilder(tiff).Undefined(kIptc, "room for a new and longer caption")
                                   : TiffBuilder(tiff).Short(60000, 1))
                              .Build();
      const auto source = SourceOf(before);
      EditedFile file(source);
      const bool fits = count < 70 || (count == 70 && hasIptc);
      if (fits) {
        WriteTiffIptc(file, block);
        EXPECT_EQ(Read(file).iptc, block.items);
        continue;
      }
      EXPECT_THROW(WriteTiffIptc(file, block), ExifException);
      EXPECT_THROW(UpdateIfdEntry(file, {.tag = kOrientation, .value = 6}), ExifException);
      EXPECT_FALSE(file.Touched());
    }
  }
}

TEST(TiffWriters, NeverTouchImageData) {
  const auto before = Camera(Endian::Little).Build();
  const auto source = SourceOf(before);
  EditedFile file(source);
  file.Overwrite(before.find("pixels"), platform::AsBytes("P"));
  EXPECT_THROW(RequireSameImageData(file, 0, TiffMagic::Required), ExifException);
  EditedFile longer(source);
  longer.Insert(before.find("A description"), platform::AsBytes("P"));
  EXPECT_THROW(RequireSameImageData(longer, 0, TiffMagic::Required), ExifException);

  // Some writers point to sub-directories with a type of their own.
  const auto pages = TiffBuilder().SubDirectories({TiffBuilder().Pieces(273, 279, {"small pixels"})});
  auto typed = pages.Build();
  typed[typed.find("\x4a\x01\x04"s) + 2] = 13;
  const auto typedSource = SourceOf(typed);
  EditedFile typedFile(typedSource);
  typedFile.Overwrite(typed.find("small pixels"), platform::AsBytes("S"));
  EXPECT_THROW(RequireSameImageData(typedFile, 0, TiffMagic::Required), ExifException);
}

}  // namespace
}  // namespace ml::metadata
