#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace ml::rawconvert {

/// Bits of a buffer, the highest of each byte first. Zeros follow the end; Overrun() tells that some were taken.
class NefBits {
 public:
  explicit NefBits(std::span<const std::byte> bytes) : bytes_(bytes) {}

  /// The next `count` bits, 0 to 16, which stay to be taken.
  std::uint32_t Peek(int count) {
    if (held_ < count) Fill();
    return static_cast<std::uint32_t>(word_ >> 1 >> (63 - count));
  }
  void Skip(int count) {
    word_ <<= count;
    held_ -= count;
  }
  std::uint32_t Take(int count) {
    const auto bits = Peek(count);
    Skip(count);
    return bits;
  }
  bool Overrun() const { return next_ > bytes_.size() && held_ < static_cast<int>(next_ - bytes_.size()) * 8; }

 private:
  void Fill() {
    while (held_ <= 56) {
      const auto byte = next_ < bytes_.size() ? std::to_integer<std::uint64_t>(bytes_[next_]) : 0;
      ++next_;
      word_ |= byte << (56 - held_);
      held_ += 8;
    }
  }

  std::span<const std::byte> bytes_;
  std::size_t next_ = 0;
  std::uint64_t word_ = 0;  ///< what is held, at the upper end
  int held_ = 0;
};

}  // namespace ml::rawconvert
