#include "app/shooting_data_memory.h"

#include "imagefiles/profile_name.h"

namespace ml::app {

metadata::ExifData& ShootingDataMemory::Of(const std::string& path, const metadata::ExifOptions& options) {
  const auto identity = platform::IdentityOf(path);
  if (!data_ || data_->path != path || identity != identity_ || options != options_) {
    data_.emplace(path, options);
    imagefiles::FillProfileName(*data_);
    identity_ = identity;
    options_ = options;
  }
  return *data_;
}

}  // namespace ml::app
