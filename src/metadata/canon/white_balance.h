#pragma once

#include <cstdint>
#include <string_view>

namespace ml::metadata {

/// "Unknown" for a code without a word.
std::string_view CanonWhiteBalanceWord(std::uint32_t code);

/// The word that is followed by the number of kelvin where that is known.
inline constexpr std::string_view kColorTemperatureWord = "Color temp";

}  // namespace ml::metadata
