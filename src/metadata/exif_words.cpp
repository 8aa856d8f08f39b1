#include "metadata/exif_words.h"

#include "metadata/code_word.h"

namespace ml::metadata {
namespace {

constexpr CodeWord kExposureModes[] = {{1, "Manual"},       {2, "Program"}, {3, "Av"},       {4, "Tv"},
                                       {5, "Slow Program"}, {6, "Sport"},   {7, "Portrait"}, {8, "Landscape"}};

constexpr CodeWord kMeteringModes[] = {{1, "Average"},    {2, "Center-weighted average"}, {3, "Spot"},
                                       {4, "Multi-spot"}, {5, "Multi-segment"},           {6, "Partial"}};

constexpr CodeWord kWhiteBalances[] = {
    {0, "Auto"},
    {1, "Daylight"},
    {2, "Fluorescent"},
    {3, "Tungsten"},
    {4, "Flash"},
    {9, "Fine weather"},
    {10, "Cloudy"},
    {11, "Shade"},
    {12, "Daylight fluorescent"},
    {13, "Day white fluorescent"},
    {14, "Cool white fluorescent"},
    {15, "White fluorescent"},
    {17, "Standard light A"},
    {18, "Standard light B"},
    {19, "Standard light C"},
    {20, "D55"},
    {21, "D65"},
    {22, "D75"},
    {23, "D50"},
    {24, "ISO studio tungsten"},
};

constexpr CodeWord kLevels[] = {{0, "Normal"}, {1, "Low"}, {2, "High"}};

constexpr std::uint32_t kFlashFired = 0x01, kFlashAutomatic = 0x18, kFlashRedEye = 0x40;

}  // namespace

std::string_view ExposureModeWord(std::uint32_t code) { return WordOf(kExposureModes, code, ""); }
std::string_view MeteringModeWord(std::uint32_t code) { return WordOf(kMeteringModes, code, "Unknown"); }
std::string_view WhiteBalanceWord(std::uint32_t code) { return WordOf(kWhiteBalances, code, "Other"); }
std::string_view LevelWord(std::uint32_t code) { return WordOf(kLevels, code, ""); }

std::string FlashWord(std::uint32_t flags) {
  std::string word = "Off";
  if ((flags & kFlashFired) != 0) word = (flags & kFlashAutomatic) == kFlashAutomatic ? "Auto" : "On";
  return (flags & kFlashRedEye) != 0 ? word + " + Red-eye reduction" : word;
}

}  // namespace ml::metadata
