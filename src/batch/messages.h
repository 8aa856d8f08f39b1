#pragma once

#include <cstddef>
#include <string>

/// What batch renaming says to the user.
namespace ml::batch {

inline constexpr char kReadingShootingData[] = "Reading shooting data...";
inline std::string ReadingImage(std::size_t number, std::size_t count) {
  return "Reading image " + std::to_string(number) + " of " + std::to_string(count);
}

inline constexpr char kIndexOverflow[] = "Overflow in GetNewName()!";
inline constexpr char kConflictHeading[] = "ERROR: the following filenames conflict with\nexisting files:\n";
inline constexpr char kNamesConflict[] =
    "New names conflict with existing files.\nPlease choose a different renaming scheme";

inline std::string ConflictingName(const std::string& name) {
  return "A file of this name exists and takes no part in the renaming: " + name;
}
inline std::string ForbiddenCharacter(const std::string& name) {
  return "A filename cannot contain any of the following characters:\n\\/:*?\"<>|\nFile: " + name;
}
inline std::string RawNameTooLong(const std::string& oldName, const std::string& newName) {
  return "Filenames for Canon RAW files must be no more than 31 characters long:\nOriginal name: " + oldName +
         "\nNew name: " + newName;
}
inline std::string DuplicateName(const std::string& name) { return "Duplicate filename: " + name; }
inline std::string SameButForCase(const std::string& name) {
  return "Two names differ only in upper and lower case: " + name;
}
inline std::string NotAName(const std::string& oldName) {
  return "The style gives no usable filename\nOriginal name: " + oldName;
}
inline std::string NameTooLong(const std::string& oldName) {
  return "The style gives a filename of more than 255 bytes\nOriginal name: " + oldName;
}
inline std::string FileInTheWay(const std::string& path) {
  return "Another file stands where a file that goes with an image is to go:\n" + path;
}
inline std::string NotWritable(const std::string& directory) {
  return "Files in this directory cannot be renamed, because it is not writable:\n" + directory;
}

/// Where all else fails.
inline constexpr char kErrorRenaming[] = "Error renaming files";

}  // namespace ml::batch
