#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "imaging/colour/colour_transform.h"
#include "imaging/pixel_buffer.h"
#include "platform/file_identity.h"

namespace ml::imaging {

/// What a profile is opened from, and what tells it from others: its bytes, or a file as it is now.
class ProfileSource {
 public:
  explicit ProfileSource(std::vector<std::byte> bytes) : bytes_(std::move(bytes)) {}
  explicit ProfileSource(const std::string& path) : path_(path), identity_(platform::IdentityOf(path)) {}

  ColourProfile Open() const {
    return path_.empty() ? ColourProfile::FromMemory(bytes_) : ColourProfile::FromFile(path_);
  }
  std::size_t Size() const { return bytes_.size(); }
  bool operator==(const ProfileSource&) const = default;

 private:
  std::vector<std::byte> bytes_;
  std::string path_;  ///< empty for bytes
  std::optional<platform::FileIdentity> identity_;
};

/// Turns an 8-bit picture in place from the colours of one profile into those of the other. False, and the picture as
/// it is, where one of them cannot be opened or is not RGB. Safe on several threads at once: each remembers the few
/// transforms that it used last, since making one costs as much as many thumbnails.
bool TransformPicture(PixelBuffer& picture, ProfileSource from, ProfileSource to, RenderingIntent intent);

}  // namespace ml::imaging
