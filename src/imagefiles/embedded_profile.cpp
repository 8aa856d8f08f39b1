#include "imagefiles/embedded_profile.h"

#include "imagefiles/format_table.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {

std::optional<metadata::IccProfile> ReadEmbeddedProfile(const std::string& path) {
  const auto* row = FindFormat(path);
  if (row == nullptr || row->format != Format::Jp2) return metadata::GetIccProfileData(path);
  try {
    const platform::ReadableFile file(path);
    return metadata::ReadJp2IccProfile(metadata::FileSource(file));
  } catch (const platform::UserError&) {
    return std::nullopt;  // a file without a profile is the same to whoever asks
  }
}

}  // namespace ml::imagefiles
