#include "rawconvert/raw_develop_params.h"

#include <algorithm>
#include <bit>

namespace ml::rawconvert {
namespace {

constexpr std::size_t kCustomFlag = 42, kCustomX = 44, kCustomY = 48, kPhotoEffect = 156;
/// Where the engine keeps what it computed; the first four floats are the coefficients.
constexpr std::size_t kComputed = 52, kComputedEnd = 156;

}  // namespace

std::int16_t RawDevelopParams::Get(std::size_t offset) const {
  return static_cast<std::int16_t>(std::to_integer<unsigned>(bytes_[offset]) |
                                   std::to_integer<unsigned>(bytes_[offset + 1]) << 8U);
}

void RawDevelopParams::Set(std::size_t offset, int value) {
  bytes_[offset] = static_cast<std::byte>(value & 0xFF);
  bytes_[offset + 1] = static_cast<std::byte>(value >> 8 & 0xFF);
}

std::uint32_t RawDevelopParams::GetLong(std::size_t offset) const {
  return static_cast<std::uint16_t>(Get(offset)) | static_cast<std::uint32_t>(Get(offset + 2)) << 16U;
}

void RawDevelopParams::SetLong(std::size_t offset, std::uint32_t value) {
  Set(offset, static_cast<int>(value & 0xFFFFU));
  Set(offset + 2, static_cast<int>(value >> 16U));
}

void RawDevelopParams::SetHeader() {
  Set(0, 0);
  Set(2, 1);
  Set(4, 0);
}

void RawDevelopParams::ClearComputed() {
  std::fill(bytes_.begin() + kComputed, bytes_.begin() + kComputedEnd, std::byte{});
}

WhitePoint RawDevelopParams::CustomPoint() const {
  return {static_cast<std::int32_t>(GetLong(kCustomX)), static_cast<std::int32_t>(GetLong(kCustomY))};
}

void RawDevelopParams::SetCustomPoint(WhitePoint point) {
  Set(kCustomFlag, 1);
  SetLong(kCustomX, static_cast<std::uint32_t>(point.x));
  SetLong(kCustomY, static_cast<std::uint32_t>(point.y));
}

WhiteBalanceCoefficients RawDevelopParams::Coefficients() const {
  WhiteBalanceCoefficients coefficients;
  for (std::size_t i = 0; i < 4; ++i) coefficients.multipliers[i] = std::bit_cast<float>(GetLong(kComputed + 4 * i));
  return coefficients;
}

void RawDevelopParams::SetCoefficients(const WhiteBalanceCoefficients& coefficients) {
  for (std::size_t i = 0; i < 4; ++i)
    SetLong(kComputed + 4 * i, std::bit_cast<std::uint32_t>(coefficients.multipliers[i]));
}

int RawDevelopParams::PhotoEffect() const { return static_cast<std::int8_t>(bytes_[kPhotoEffect]); }

void RawDevelopParams::SetPhotoEffect(int effect) { bytes_[kPhotoEffect] = static_cast<std::byte>(effect & 0xFF); }

}  // namespace ml::rawconvert
