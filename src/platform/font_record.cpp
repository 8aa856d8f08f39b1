#include "platform/font_record.h"

#include <algorithm>
#include <cstdlib>

#include "platform/text.h"

namespace ml::platform {

namespace {
constexpr std::size_t kFaceOffset = 28;
constexpr std::size_t kFaceSize = 32;
}  // namespace

std::int32_t mulDiv(std::int32_t number, std::int32_t numerator, std::int32_t denominator) {
  const std::int64_t product = std::int64_t{number} * numerator;
  const std::int64_t divisor = denominator;
  const std::int64_t half = std::abs(divisor) / 2;
  const bool sameSign = (product < 0) == (divisor < 0);
  const std::int64_t magnitude = (std::abs(product) + half) / std::abs(divisor);
  return static_cast<std::int32_t>(sameSign ? magnitude : -magnitude);
}

FontRecord FontRecord::FromPoints(std::string_view face, int points) {
  FontRecord font;
  font.SetHeight(-mulDiv(points, kScreenDpi, 72));
  font.SetWeight(400);
  font.SetFace(face);
  return font;
}

bool FontRecord::SetHex(std::string_view digits) {
  std::string bytes;
  if (digits.size() != 2 * kSize || !FromHex(digits, bytes)) return false;
  std::ranges::copy(bytes, bytes_.begin());
  return true;
}

std::string FontRecord::Hex() const { return ToHex(std::string(bytes_.begin(), bytes_.end())); }

std::int32_t FontRecord::Height() const { return Long(0); }
std::int32_t FontRecord::Weight() const { return Long(16); }
void FontRecord::SetHeight(std::int32_t height) { PutLong(0, height); }
void FontRecord::SetWeight(std::int32_t weight) { PutLong(16, weight); }

std::string FontRecord::Face() const {
  const std::string field(bytes_.begin() + kFaceOffset, bytes_.end());
  return field.substr(0, field.find('\0'));
}

double FontRecord::PointSize() const { return std::abs(static_cast<double>(Height())) * 72.0 / kScreenDpi; }

void FontRecord::SetFace(std::string_view face) {
  std::fill(bytes_.begin() + kFaceOffset, bytes_.end(), std::uint8_t{0});
  std::ranges::copy(CutToBytes(face, kFaceSize - 1), bytes_.begin() + kFaceOffset);
}

std::int32_t FontRecord::Long(std::size_t offset) const {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | bytes_[offset + i];
  return static_cast<std::int32_t>(value);
}

void FontRecord::PutLong(std::size_t offset, std::int32_t value) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes_[offset + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
  }
}

}  // namespace ml::platform
