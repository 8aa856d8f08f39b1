#pragma once

#include <optional>
#include <string>

#include "metadata/exif_data.h"
#include "platform/file_identity.h"

namespace ml::app {

/// The shooting data of the image asked for last: texts about it are made anew at every change of focus, selection
/// or tags, its file is read once.
class ShootingDataMemory {
 public:
  /// Stays valid until the next call. The file is read again if it is no longer the same or `options` differ.
  metadata::ExifData& Of(const std::string& path, const metadata::ExifOptions& options);
  /// A companion may have changed unseen.
  void Forget() { data_.reset(); }

 private:
  std::optional<metadata::ExifData> data_;
  std::optional<platform::FileIdentity> identity_;
  metadata::ExifOptions options_;
};

}  // namespace ml::app
