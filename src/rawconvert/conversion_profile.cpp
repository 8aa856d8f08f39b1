#include "rawconvert/conversion_profile.h"

#include "imagefiles/source_profile.h"
#include "platform/read_directory.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

template <class Value>
Value Find(const std::map<std::string, Value>& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? Value{} : found->second;
}

}  // namespace

std::string GetConversionProfile(const metadata::ExifData& shootingData, bool linear, const RawProfileTable& table,
                                 platform::Interaction& ask, const imagefiles::ProfileFinder& finder) {
  using imagefiles::ColourSpace;
  const int flags = Find(table.flags, shootingData.model);
  if ((flags & (linear ? profile_flag::kEmbedLinear : profile_flag::kEmbedNormal)) == 0) return {};
  const auto space = imagefiles::RecordedColourSpaceOf(shootingData);
  if (space == ColourSpace::Srgb && (flags & profile_flag::kAutoSrgb) != 0) return finder.FindSrgbProfile();
  if (space == ColourSpace::AdobeRgb && (flags & profile_flag::kAutoAdobeRgb) != 0) return finder.FindAdobeRgbProfile();
  return ExistingProfile(Find(linear ? table.linear : table.normal, shootingData.model), ask);
}

std::string ExistingProfile(const std::string& path, platform::Interaction& ask) {
  if (path.empty() || platform::Exists(path)) return path;
  ask.message({.text = messages::kNoProfile + path, .icon = platform::BoxIcon::Warning});
  return {};
}

}  // namespace ml::rawconvert
