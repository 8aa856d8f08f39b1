#pragma once

#include <array>
#include <string_view>

namespace ml::metadata {

/// Under which heading a list of all shooting data shows something, in the list's order.
enum class ShootingGroup {
  Image,
  Camera,
  Exposure,
  Lens,
  Flash,
  Colour,
  Maker,
  CustomFunctions,
  Iptc,
  Comment,
  File,
  None  ///< nowhere: told under another name, or of no use to people
};

inline constexpr std::array<std::string_view, static_cast<std::size_t>(ShootingGroup::None)> kShootingGroups = {
    "Image", "Camera",   "Exposure", "Lens and Focus", "Flash", "Colour", "Maker's Settings", "Custom Functions",
    "IPTC",  "Comments", "File"};

}  // namespace ml::metadata
