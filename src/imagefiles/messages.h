#pragma once

#include <string>

/// The sentences of this module.
namespace ml::imagefiles::messages {

inline std::string UnableToRead(const std::string& path, const std::string& reason) {
  return "Unable to read " + path + ": " + reason;
}
inline std::string NoThumbnail(const std::string& path) {
  return "Unable to make a thumbnail of " + path + ": pictures of this format cannot be read yet";
}
inline std::string NoImage(const std::string& path) {
  return "Unable to make a thumbnail of " + path + ": its name is not that of an image";
}

}  // namespace ml::imagefiles::messages
