#pragma once

/// What a batch of conversions says; a path follows where a text ends in a line break or a blank.
namespace ml::rawconvert::messages {

inline constexpr char kTitle[] = "Convert RAW Files";

inline constexpr char kMakingDirectory[] = "Creating output directory for converted files:\n";
inline constexpr char kError[] = "Error: ";
inline constexpr char kNoDirectory[] = "\nis not a directory";
inline constexpr char kCreating[] = "Error creating directory:\n";

inline constexpr char kSameFile[] = "Sorry, the source and destination files must be different\nFile: ";
inline constexpr char kSameFileChoice[] =
    "\n\nPlease press Yes to continue and choose a new destination filename or\nNo to skip this file.";
inline constexpr char kStillSame[] = "Source and destination filenames are still the same.\nThis file will be ignored.";
inline constexpr char kSavedAsSource[] =
    "Sorry, source and destination filenames must be different.\nThis file will be ignored.";
inline constexpr char kSaveAs[] = "Save As";

inline constexpr char kNoPicture[] = "no picture found";
inline constexpr char kNameTooLong[] = "the name of a Canon raw file must be no more than 31 characters long";

inline constexpr char kInPlaceOfSource[] = "the picture would take the place of a raw file";

inline constexpr char kErrorConverting[] = "Error converting ";

}  // namespace ml::rawconvert::messages
