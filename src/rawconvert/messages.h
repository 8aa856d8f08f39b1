#pragma once

#include <string>
#include <string_view>

/// The sentences of this module.
namespace ml::rawconvert::messages {

inline std::string EightBitOnly(const std::string& model) {
  return "WARNING: The " + model +
         "\nonly supports 8-bit conversion and does not support\nlinear or combined conversion.\nDo you wish to "
         "continue?";
}

inline std::string NotConvertible(const std::string& model) {
  return "Sorry, " + model + " raw conversion\nis not supported in this release.";
}

inline constexpr char kOnNetworkDrive[] =
    "Due to a limitation in Canon's SDK it\nisn't possible to open Canon EOS 1D and\n1Ds raw files on network drives "
    "unless\nthey are mapped to drive letters.";
inline constexpr char kUnableToOpen[] = "Unable to open image";

inline constexpr char kRawInvalid[] = "Raw file is invalid and cannot be converted\n";
inline std::string FormatNotSupported(const std::string& model) { return model + " raw file format not supported\n"; }

inline constexpr char kUndefinedCode[] = "Undefined CDSDK error";

inline constexpr char kNameTooLong[] = "the name of a Canon raw file must be no more than 31 characters long";

/// Of developing a whole file for those who edit it.
inline std::string CannotDevelop(const std::string& path, const std::string& reason) {
  return "Unable to develop:\n" + path + "\n" + reason;
}

// What a conversion says while it works.

inline constexpr char kConverting[] = "Converting raw file...";
inline constexpr char kHighlights[] = "Converting raw image for highlights...";
inline constexpr char kCombining[] = "Combining images...";
inline constexpr char kReducingNoise[] = "Applying Smart Noise Reduction Filter...";
inline constexpr char kAutoLevels[] = "Auto levels...";
inline constexpr char kManualLevels[] = "Adjusting levels...";
inline constexpr char kResizing[] = "Resizing image...";
inline constexpr char kUnsharpMask[] = "Applying unsharp mask...";
inline constexpr char kHqSharpening[] = "Applying HQ style sharpening...";
inline constexpr char kWriting[] = "Writing image...";

inline constexpr char kNoProfile[] = "Profile file does not exist:\n";

// What a run of conversions says; a path follows where a text ends in a line break or a blank.

inline constexpr char kTitle[] = "Convert RAW Files";

inline constexpr char kMakingDirectory[] = "Creating output directory for converted files:\n";
inline constexpr char kError[] = "Error: ";

inline constexpr char kSameFile[] = "Sorry, the source and destination files must be different\nFile: ";
inline constexpr char kSameFileChoice[] =
    "\n\nPlease press Yes to continue and choose a new destination filename or\nNo to skip this file.";
inline constexpr char kStillSame[] = "Source and destination filenames are still the same.\nThis file will be ignored.";
inline constexpr char kSavedAsSource[] =
    "Sorry, source and destination filenames must be different.\nThis file will be ignored.";
inline constexpr char kSaveAs[] = "Save As";

inline constexpr char kNoPicture[] = "no picture found";

inline constexpr char kInPlaceOfSource[] = "the picture would take the place of a raw file";

inline constexpr char kErrorConverting[] = "Error converting ";

}  // namespace ml::rawconvert::messages
