#include "metadata/edit/relocated_note.h"

#include <gtest/gtest.h>

#include <string>

#include "metadata/ifd.h"
#include "metadata/memory.h"
#include "platform/text.h"
#include "support/tiff_builder.h"

namespace ml::metadata {
namespace {

using test::Endian;
using test::TiffBuilder;

constexpr int kNoteTag = 37500;

ByteOrder OrderOf(Endian order) { return order == Endian::Big ? ByteOrder::Big : ByteOrder::Little; }

TiffBuilder Directory(Endian order) {
  return TiffBuilder(order)
      .Short(1, {1, 2, 3})
      .Ascii(2, "text")
      .Long(3, {70'000, 2})
      .Rational(4, 5, 3)
      .Undefined(5, "bytes in their order")
      .Short(6, 7)
      .Ascii(7, "odd length");
}

struct Note {
  std::uint32_t offset = 0;
  std::vector<std::byte> bytes;
};
/// A file's note behind `room` bytes of something else.
Note NoteOf(Endian order, const std::string& name, std::size_t room) {
  const auto file =
      TiffBuilder(order).Ascii(270, std::string(room, 'x')).Note(kNoteTag, name, Directory(order)).Build();
  const auto source = SourceOf(file);
  Note note;
  IfdWalker(source, OrderOf(order)).Walk(8, [&](const IfdEntry& entry) {
    if (entry.tag == kNoteTag) note = {entry.rawValue, source.Read(entry.rawValue, entry.count)};
    return Visit::Continue;
  });
  return note;
}

TEST(RelocatedNote, IsWhatTheCameraWouldHaveWrittenThere) {
  for (const auto& name : {std::string(), std::string("Nikon\0\1\0", 8), std::string("OLYMP\0\1\0", 8)}) {
    for (const auto from : {Endian::Little, Endian::Big}) {
      for (const auto to : {Endian::Little, Endian::Big}) {
        const auto old = NoteOf(from, name, 1000), expected = NoteOf(to, name, 20);
        const auto moved = RelocatedNote(old.bytes, OrderOf(from), old.offset, OrderOf(to), expected.offset);
        EXPECT_TRUE(moved == expected.bytes) << name << static_cast<int>(from) << static_cast<int>(to);
      }
    }
  }
}

TEST(RelocatedNote, LeavesOthersAsTheyAre) {
  for (const auto& note : {std::string("Nikon\0\2\0\0\0MM", 12), std::string("FUJIFILM\x0c\0\0\0", 12),
                           std::string("AOC\0 something else"), std::string("\1"), std::string()}) {
    const auto bytes = platform::AsBytes(note);
    EXPECT_EQ(TextOf(RelocatedNote(bytes, ByteOrder::Big, 100, ByteOrder::Little, 7)), note);
  }
}

TEST(RelocatedNote, TakesNoMoreThanTheNoteHolds) {
  const auto note = NoteOf(Endian::Little, "", 8);
  for (std::size_t size = 0; size <= note.bytes.size(); ++size) {
    for (const std::uint32_t offset : {0U, note.offset, note.offset + 3, 0xffffffffU}) {
      const auto cut = std::span(note.bytes).first(size);
      const auto result = RelocatedNote(cut, ByteOrder::Little, offset, ByteOrder::Big, 0xfffffff0);
      EXPECT_LE(result.size(), 2 * size + 20) << size << " " << offset;
    }
  }
}

}  // namespace
}  // namespace ml::metadata
