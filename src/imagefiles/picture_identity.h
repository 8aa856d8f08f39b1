#pragma once

#include <array>
#include <optional>
#include <string>

#include "platform/file_identity.h"

namespace ml::imagefiles {

/// Tells whether the picture of an image file would come out of the same bytes as before.
struct PictureIdentity {
  platform::FileIdentity file;
  /// Of the companion that the picture may be taken from, in the two spellings that cameras write.
  std::array<std::optional<platform::FileIdentity>, 2> companion{};

  bool operator==(const PictureIdentity&) const = default;
};

/// Nothing if there is no file `path`. Opens none.
std::optional<PictureIdentity> PictureIdentityOf(const std::string& path);

}  // namespace ml::imagefiles
