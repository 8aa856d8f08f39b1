#pragma once

#include <string>

/// The sentences of this module. A path stands on a line of its own, then the reason.
namespace ml::imagefiles::messages {

inline std::string UnableToRead(const std::string& path, const std::string& reason) {
  return "Unable to read image:\n" + path + "\n" + reason;
}
inline std::string NoThumbnail(const std::string& path) {
  return "Unable to make a thumbnail of:\n" + path + "\nPictures of this format cannot be read yet";
}
inline std::string NoImage(const std::string& path) {
  return "Unable to make a thumbnail of:\n" + path + "\nIts name is not that of an image";
}

}  // namespace ml::imagefiles::messages
