#include "metadata/canon/white_balance.h"

#include "metadata/code_words.h"

namespace ml::metadata {
namespace {

constexpr CodeWord kWords[] = {
    {0, "Auto"},           {1, "Daylight"}, {2, "Cloudy"},   {3, "Tungsten"}, {4, "Fluorescent"},
    {5, "Flash"},          {6, "Preset"},   {7, "BW"},       {8, "Shade"},    {9, kColorTemperatureWord},
    {14, "Fluorescent-H"}, {15, "Custom1"}, {16, "Custom2"},
};

}  // namespace

std::string_view CanonWhiteBalanceWord(std::uint32_t code) { return WordOf(kWords, code, "Unknown"); }

}  // namespace ml::metadata
