#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace ml::metadata {

/// Camera settings in the heaps of a CRW file that are carried from one file to another.
struct CiffSettings {
  std::optional<std::uint16_t> colorTemperature;         ///< record 0xAE, kelvin
  std::optional<std::uint16_t> colorSpace;               ///< record 0xB4: 1 sRGB, 2 AdobeRGB
  std::optional<std::array<std::uint16_t, 3>> settingA;  ///< record 0x2A, words 55 to 57
  std::optional<std::uint16_t> settingB;                 ///< record 0x2D, word 42
  std::optional<std::uint16_t> settingC;                 ///< record 0x2A, word 7: read only
  bool operator==(const CiffSettings&) const = default;
};

enum class CiffPatch {
  Collect,  ///< the values go into the settings
  Apply,    ///< those that the settings have go into the heap first
};

/// Walks a heap with its sub-heaps; all numbers are little-endian. Neither size nor structure of the heap changes, and
/// what is broken in it is passed over.
void PatchSettings(std::span<std::byte> heap, CiffSettings& settings, CiffPatch mode);

}  // namespace ml::metadata
