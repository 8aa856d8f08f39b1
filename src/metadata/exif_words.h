#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The words that the numbers of the standard tags are shown as. An empty word means that nothing is known.
namespace ml::metadata {

std::string_view ExposureModeWord(std::uint32_t code);
/// "Unknown" for a code without a word.
std::string_view MeteringModeWord(std::uint32_t code);
/// "Other" for a code without a word.
std::string_view WhiteBalanceWord(std::uint32_t code);
/// Contrast, saturation and sharpness alike: "Normal", "Low", "High".
std::string_view LevelWord(std::uint32_t code);
/// "Off", "On" or "Auto", with " + Red-eye reduction".
std::string FlashWord(std::uint32_t flags);

}  // namespace ml::metadata
