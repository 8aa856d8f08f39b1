#pragma once

#include <cstdint>
#include <string>

namespace ml::metadata {

/// Word 29 of cameras that do not write one: the built-in flash.
inline constexpr std::uint16_t kBuiltInFlash = 0x2000;

/// Which flash fired and how, from the flash mode and the bits of word 29.
std::string CanonFlashText(std::uint16_t mode, std::uint16_t detail);

}  // namespace ml::metadata
