#pragma once

#include <string>
#include <string_view>

#include "metadata/messages.h"

/// The sentences of this module. A path stands on a line of its own, then the reason.
namespace ml::imagefiles::messages {

inline constexpr std::string_view kAviRotate = "AVI movie rotation not supported in this version";
inline constexpr std::string_view kPsdRotate = "Photoshop image rotation not supported in this version";
inline constexpr std::string_view kGifRotate = "GIF image rotation not supported in this version";
inline constexpr std::string_view kMrwRotate = "Minolta MRW image rotation not supported in this version";
inline constexpr std::string_view kPefRotate = "Pentax raw image rotation not supported in this version";
inline constexpr std::string_view kPngRotate = "PNG image rotation not supported in this version";
inline constexpr std::string_view kJp2Rotate = "JPEG 2000 rotation not supported in this version";

inline constexpr std::string_view kGifComment = "GIF image comments are not supported in this version";
inline constexpr std::string_view kBmpComment = "BMP image comments are not supported in this version";
inline constexpr std::string_view kMrwComment = "Minolta MRW image comments are not supported in this version";
inline constexpr std::string_view kRafComment = "Fuji RAF image comments are not supported in this version";
inline constexpr std::string_view kPefComment = "Pentax raw image comments are not supported in this version";

inline constexpr std::string_view kEos1DExifCopy =
    "Copying EXIF data to Canon EOS 1D/1Ds raw files\nis not supported in this version";

inline constexpr std::string_view kRotateReadOnly = "Unable to rotate image because it is read-only";
inline constexpr std::string_view kCommentReadOnly = "Unable to add comment because image is read-only";
inline constexpr std::string_view kIptcDataReadOnly = "Unable to write IPTC data because image is read-only";
inline constexpr std::string_view kIptcReadOnly = "Unable to write IPTC because image is read-only";
inline constexpr std::string_view kUpdateReadOnly = "Unable to update image because it is read-only";
inline constexpr std::string_view kThumbnailReadOnly = "Unable to regenerate thumbnail because image is read-only";

inline constexpr char kCaptionFailed[] = "Error writing comment in IPTC caption";
inline constexpr char kPictureDamaged[] = "The picture is damaged";

inline constexpr char kNoProfile[] = "No color profile specified";
inline constexpr char kProfileMissing[] = "Color profile file does not exist";
inline constexpr char kProfileUnreadable[] = "Can't read color profile";
inline constexpr char kJpegUnreadable[] = "Can't read JPEG";
inline constexpr std::string_view kInvalidTiff = "Invalid TIFF";
inline constexpr std::string_view kInvalidNef = "Invalid NEF";
inline constexpr std::string_view kInvalidOrf = "Invalid ORF";
inline constexpr std::string_view kInvalidRaf = "Invalid RAF";
inline constexpr std::string_view kInvalidPef = "Invalid PEF";
inline constexpr std::string_view kInvalidMrw = "Invalid MRW";
inline constexpr std::string_view kNoTiffComment = "TIFF file does not contain an EXIF UserComment field";
inline constexpr std::string_view kEmbeddedReadOnly =
    "Unable to regenerate the embedded JPEG because image is read-only";
inline constexpr std::string_view kEos1DTiffRotate = "Canon EOS 1D raw file rotation not supported in this version";
inline constexpr std::string_view kThumbnailOnlyRotate =
    "Unable to rotate file because it is probably a raw file with a .tif extension";

inline constexpr char kEmbeddedJpeg[] = "Error reading JPEG thumbnail";
inline constexpr char kNoFrame[] = "The movie has no frame that can be read";

inline std::string NotWritten(const std::string& path, const std::string& reason) {
  return "Unable to write to:\n" + path + "\n" + reason;
}
inline std::string IptcNotWritten(const std::string& reason) { return "Error writing IPTC data\n" + reason; }
inline std::string CaptionNotWritten(const std::string& reason) { return kCaptionFailed + ("\n" + reason); }
inline std::string NotAnImage(const std::string& path) { return "Not the name of an image:\n" + path; }
inline std::string CannotHoldIptc(const std::string& path) { return "This format cannot hold IPTC data:\n" + path; }
inline std::string NotAProfile(const std::string& path) { return "File is not an ICC color profile:\n" + path; }
inline std::string NoSuchImage(const std::string& path) { return "No such image: " + path; }
inline std::string UnableToRead(const std::string& path, const std::string& reason) {
  return "Unable to read image:\n" + path + "\n" + reason;
}
inline std::string UnableToTurn(const std::string& path, const std::string& reason) {
  return "Unable to rotate image:\n" + path + "\n" + reason;
}
inline std::string NoThumbnail(const std::string& path, const std::string& reason) {
  return "Unable to regenerate thumbnail of:\n" + path + "\n" + reason;
}
inline std::string DamagedMetadata(const std::string& path) { return "Its EXIF data are damaged:\n" + path; }
inline std::string NoImage(const std::string& path) {
  return "Unable to make a thumbnail of:\n" + path + "\nIts name is not that of an image";
}

inline std::string DamagedForEdit(const std::string& path) {
  return std::string(metadata::messages::kDamagedForEdit) + ":\n" + path;
}
inline std::string NoRotationRecord(const std::string& path) {
  return "The file has no record of a rotation that could be changed:\n" + path;
}
inline std::string NoCrwComment(const std::string& path) {
  return "The file has no record for such a comment and no .thm file beside it:\n" + path;
}
inline std::string NoDevelopment(const std::string& path) { return "Raw files cannot be developed here:\n" + path; }
inline std::string NotDevelopable(const std::string& path) {
  return "This is not a raw file of the kind that is developed for this:\n" + path;
}
inline std::string NoThm(const std::string& path) { return "There is no .thm file beside this one:\n" + path; }
inline std::string NoRoomInTiff(const std::string& path) {
  return "The file is too large to take anything more and was not changed:\n" + path;
}
inline std::string TooManyEntries(const std::string& path) {
  return "The first directory of the file has no room for another entry, and the file was not changed:\n" + path;
}
inline std::string UnableToReadTiff(const std::string& reason, const std::string& description) {
  return "Unable to read TIFF file\nReason: " + reason + "\nDescription: " + description;
}
inline std::string UnableToWriteTiff(const std::string& path, const std::string& reason) {
  return "Unable to write temporary TIFF file\n" + path + "\n" + reason;
}

}  // namespace ml::imagefiles::messages
