#pragma once

#include <string>
#include <string_view>

/// The sentences of the tools, those of their dialogs too. A path stands on a line of its own.
namespace ml::imagefiles::tool_messages {

inline constexpr std::string_view kCopyExifTitle = "Copy EXIF Information";
inline constexpr std::string_view kCopySelected = "Copy &Selected";
inline constexpr std::string_view kCopyAll = "Copy &All";
inline constexpr std::string_view kSelectToCopy = "Please select one or more source files for EXIF copy.";

inline constexpr std::string_view kExportTitle = "Export EXIF Data";
inline constexpr std::string_view kExportSelected = "Export &Selected";
inline constexpr std::string_view kExportAll = "Export &All";
inline constexpr std::string_view kSelectToExport = "Please select one or more files\nfrom which to export EXIF data.";
inline constexpr std::string_view kExportFilter = "Text Files (*.txt)|*.txt|All Files (*.*)|*.*|";
inline constexpr std::string_view kExportExtension = ".txt";
inline constexpr std::string_view kBadDelimiter = "Delimiter must be one of: , ; | or ^t";

inline constexpr std::string_view kExtractTitle = "Extract Embedded JPEGs";
inline constexpr std::string_view kExtractSelected = "Extract &Selected";
inline constexpr std::string_view kExtractAll = "Extract &All";
inline constexpr std::string_view kSelectToExtract =
    "Please select one or more raw files from which to extract JPEGs.\n"
    "(Canon EOS 1D/1Ds raw files must have viewing JPEGs)";
inline constexpr std::string_view kChooseViewingJpegs =
    "Please select \"Copy Canon EOS 1D/1Ds viewing JPEGs\"\nin the \"Extract Embedded JPEGs\" dialog if you wish to\n"
    "copy the viewing JPEGs to another directory";
inline constexpr std::string_view kCopyViewingJpegs = "Copy Canon EOS 1D/1Ds viewing JPEGs";

inline std::string NoSuchDirectory(const std::string& path) { return "No such directory:\n" + path; }
inline std::string ProcessingImage(int index, int count) {
  return "Processing image " + std::to_string(index) + " of " + std::to_string(count);
}
inline std::string FileOf(int index, int count, const std::string& path) {
  return "File " + std::to_string(index) + " of " + std::to_string(count) + "\n" + path;
}
inline std::string CopiedTo(int count) { return "EXIF data copied to " + std::to_string(count) + " files."; }

inline std::string SourceMissing(const std::string& path) {
  return "Error copy EXIF data: source file does not exist:\n" + path;
}
inline std::string DestinationMissing(const std::string& path) {
  return "Error copy EXIF data: destination file does not exist:\n" + path;
}
inline std::string SameFiles(const std::string& path) {
  return "Error copying EXIF data\nSource and destination files are the same:\n" + path;
}
inline std::string AskReadOnly(const std::string& path) {
  return path + "\nis read-only do you wish to copy EXIF data to it?";
}
inline std::string StaysReadOnly(const std::string& path) { return "ERROR: unable to write to\n" + path; }
inline std::string CopyFailed(const std::string& path, const std::string& reason) {
  return "Error copying EXIF data to:\n" + path + "\n" + reason;
}
inline std::string TakesNoExif(const std::string& path) {
  return "EXIF data cannot be copied to a file of this format:\n" + path;
}
inline std::string NoShootingData(const std::string& path) { return "There are no EXIF data to copy in:\n" + path; }
inline std::string NoTarget(const std::string& directory) {
  return "No JPEG or TIFF file of this name to copy EXIF data to in " + directory;
}
inline std::string ReadOnly(const std::string& path) { return path + " is read-only"; }

inline std::string ExportFailed(const std::string& path, const std::string& reason) {
  return "ERROR: Unable to write EXIF data to:\n" + path + "\n" + reason;
}
inline constexpr char kIsAnImage[] = "This is an image";
inline std::string TextIsAnImage(const std::string& path) { return "Not written, as it is an image:\n" + path; }

inline std::string AskCreateDirectory(const std::string& path) {
  return "Output directory does not exist:\n" + path + "\n\nDo you want to create it?";
}
inline std::string Exists(const std::string& path) { return path + " exists"; }
inline std::string NoJpegIn(const std::string& path) { return "Error reading JPEG from:\n" + path; }
inline std::string NoRawFile(const std::string& path) { return path + " is no raw file"; }
inline std::string NoViewingJpeg(const std::string& path) { return path + " has no viewing JPEG"; }
inline std::string ViewingJpegUnwanted(const std::string& path) {
  return path + " has its JPEG beside it, and viewing JPEGs are not copied";
}
inline std::string WithoutExif(const std::string& reason) { return "without EXIF data: " + reason; }
inline std::string NotTurned(const std::string& reason) { return "not turned: " + reason; }
inline std::string CutShort(const std::string& path) { return "Error reading from:\n" + path; }
inline std::string NotWritten(const std::string& path, const std::string& reason) {
  return "Error writing to:\n" + path + "\n" + reason;
}
inline std::string NotOpened(const std::string& path, const std::string& reason) {
  return "Unable to write to:\n" + path + "\n" + reason;
}

}  // namespace ml::imagefiles::tool_messages
