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

inline constexpr char kPreviewFailed[] = "Error converting raw file.";
inline constexpr char kInRootDirectory[] =
    "\n\nThis is due to a bug in Canon's SDK which prevents\nD60 raw files from being converted when they are in\nthe "
    "root directory of a drive. To convert this image\nit is necessary to move it to a sub directory first.";

inline constexpr char kRawInvalid[] = "Raw file is invalid and cannot be converted\n";
inline constexpr char kPreviewInvalid[] = "\nRaw file is invalid and cannot be converted.";
inline std::string FormatNotSupported(const std::string& model) { return model + " raw file format not supported\n"; }

inline constexpr char kUndefinedCode[] = "Undefined CDSDK error";

inline constexpr char kNameTooLong[] = "Its name is longer than 31 characters.";

/// Of developing a whole file for those who edit it.
inline std::string CannotDevelop(const std::string& path, const std::string& reason) {
  return "Unable to develop:\n" + path + "\n" + reason;
}

}  // namespace ml::rawconvert::messages
