#include "support/maker_notes.h"

namespace ml::test {
namespace {

constexpr int kMake = 271, kModel = 272, kExif = 34665, kWhiteBalance = 37384, kFlash = 37385, kNote = 37500;

/// What the standard's tags say in front of the note: a flash that fired in fine weather.
TiffBuilder Exif(Endian order) { return TiffBuilder(order).Short(34855, 64).Short(kWhiteBalance, 9).Short(kFlash, 1); }

TiffBuilder File(Endian order, const char* make, const TiffBuilder& exif) {
  return TiffBuilder(order).Ascii(kMake, make).Ascii(kModel, "Sample 1").Directory(kExif, exif);
}

constexpr char kNikon[] = "NIKON CORPORATION";

/// The editor's settings with a turn of 90 degrees to the left.
std::string EditorSettings() {
  return ByteString(Endian::Little).Zeros(0x559).Short(static_cast<std::uint64_t>(-90)).Zeros(8).Take();
}

}  // namespace

TiffBuilder WithNikonNote(const TiffBuilder& note) {
  const auto bytes = std::string("Nikon\0\2\0\0\0", 10) + note.Build();
  return File(Endian::Big, kNikon, Exif(Endian::Big).Undefined(kNote, bytes));
}
TiffBuilder WithBareNikonNote(const TiffBuilder& note) {
  return File(note.Order(), kNikon, Exif(note.Order()).Note(kNote, "", note));
}
TiffBuilder WithOlympusNote(const TiffBuilder& note) {
  const auto exif = Exif(note.Order()).Note(kNote, std::string("OLYMP\0\1\0", 8), note);
  return File(note.Order(), "OLYMPUS OPTICAL CO.,LTD", exif);
}
TiffBuilder WithFujiNote(const TiffBuilder& note) {
  const auto bytes = note.BuildBehind(std::string("FUJIFILM\x0c\0\0\0", 12));
  return File(Endian::Big, "FUJIFILM", Exif(Endian::Big).Undefined(kNote, bytes));
}
TiffBuilder WithCasioNote(const TiffBuilder& note) {
  return File(note.Order(), "CASIO", Exif(note.Order()).Note(kNote, "", note));
}

TiffBuilder NikonNoteDirectory(Endian order) {
  const std::string magnitude = order == Endian::Big ? std::string("\xff\xfe\0\0", 4) : std::string("\0\0\xfe\xff", 4);
  return TiffBuilder(order)
      .Short(0x02, {0, 800})
      .Ascii(0x04, "FINE   ")
      .Ascii(0x05, "SUNNY       ")
      .Ascii(0x06, "HARD  ")
      .Ascii(0x07, "AF-S  ")
      .Ascii(0x08, "NORMAL      ")
      .Data(0x0b, 8, 2, magnitude)
      .Ascii(0x81, "AUTO    ")
      .Rational(0x84, {{180, 10}, {700, 10}, {35, 10}, {45, 10}})
      .Short(0x89, 0x11)
      .Ascii(0x8d, "MODE2   ")
      .Data(0x92, 8, 1, order == Endian::Big ? std::string("\0\t", 2) : std::string("\t\0", 2))
      .Ascii(0x95, "FPNR")
      .Undefined(0xe01, EditorSettings());
}
TiffBuilder OlympusNoteDirectory() {
  return TiffBuilder().Short(0x0201, 2).Short(0x0202, 1).Short(0x1004, 2).Short(0x100b, 1).Short(0x100f, 1).Short(
      0x1029, 2);
}
TiffBuilder FujiNoteDirectory() {
  return TiffBuilder()
      .Ascii(0x1000, "NORMAL ")
      .Short(0x1001, 4)
      .Short(0x1002, 0x200)
      .Short(0x1003, 0x100)
      .Short(0x1004, 0x200)
      .Short(0x1010, 3)
      .Short(0x1020, 1)
      .Short(0x1031, 0x100);
}
TiffBuilder CasioNoteDirectory() {
  return TiffBuilder(Endian::Big)
      .Short(1, 4)
      .Short(2, 3)
      .Short(3, 5)
      .Short(4, 4)
      .Short(7, 0x81)
      .Short(0xb, 1)
      .Short(0xc, 2)
      .Short(0xd, 0);
}

}  // namespace ml::test
