#pragma once

#include <string>

/// What the readers of this module say when they give up; users see these where an edit needs the file whole.
namespace ml::metadata::messages {

inline constexpr char kCrwHeaderCut[] = "End of file reached reading header";
inline constexpr char kCrwAlignment[] = "Invalid alignment - expecting 'II' or 'MM'";
inline constexpr char kCrwEntries[] = "numEntries > 20";
inline constexpr char kCrwSeek[] = "fseek() error extracting picture info";
inline constexpr char kCrwPictureData[] = "End of file reached trying to read picture data";

inline constexpr char kCiffAlignment[] = "Invalid CRW: not II aligned";
inline constexpr char kCiffSeek[] = "fseek() error";
inline constexpr char kCiffEntries[] = "Invalid number of heaps";
inline constexpr char kCiffRead[] = "fread() error";
inline constexpr char kCiffWrite[] = "fwrite() error";
inline constexpr char kCrwTimeRange[] = "The date would be one that the file cannot hold";

/// Behind the path of the file.
inline constexpr char kIptcValueTooLong[] = ": holds an IPTC value of more than 5,120 bytes";

inline constexpr char kIptcCategoryTooLong[] = "Category must be three characters or less";
inline constexpr char kIptcCategoryLetters[] = "Category must consist of alphabetic characters";
inline constexpr char kIptcDate[] = "Invalid date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324";
inline constexpr char kIptcReleaseDate[] =
    "Invalid release date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324";
inline constexpr char kIptcTextTooLong[] = "A text must be shorter than 10,240 bytes";

inline constexpr char kProfileTooLong[] = "The color profile is too long for a JPEG, or empty";

/// Of files that an edit leaves alone; who knows the path adds it.
inline constexpr char kDamagedForEdit[] = "The file is damaged or cut off and was not changed";
inline constexpr char kImageDataChanged[] = "The picture would not stay as it is, the file was not changed";
inline constexpr char kIptcTooLong[] = "The IPTC data are longer than the file can hold";
inline constexpr char kPngTextTooLong[] = "The text is longer than 1 MiB";

inline constexpr char kExifTooSmall[] = "Too small";
inline constexpr char kExifNotExif[] = "Not EXIF";
inline constexpr char kExifAlignment[] = "Alignment invalid";
inline constexpr char kExifNoTag[] = "No EXIF tag";
inline constexpr char kExifCut[] = "The file ends inside its EXIF data";
inline constexpr char kReadShortOverflow[] = "Overflow in readShort()";
inline constexpr char kReadLongOverflow[] = "Overflow in readLong()";
inline constexpr char kWriteShortOverflow[] = "Overflow in writeShort()";
inline constexpr char kWriteLongOverflow[] = "Overflow in writeLong()";

inline constexpr char kDescriptionTooShort[] = "Comment is too long for the EXIF ImageDescription field";
inline constexpr char kNoJpegComment[] = "JPEG does not contain an EXIF UserComment or ImageDescription field";
inline constexpr char kNoJpeg[] = "Not a JPEG file";
inline constexpr char kSegmentTooLong[] = "The data do not fit into one segment of a JPEG file";

inline std::string ChangedWhileRead(const std::string& path) { return "File was changed while it was read:\n" + path; }
inline std::string NotAsWritten(const std::string& path) {
  return "The new file does not read back as it was written, the old one was kept:\n" + path;
}

}  // namespace ml::metadata::messages
