#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace ml::platform {

/// A 64-bit sum over bytes that come in pieces, of any size: against slips and crashes, not against an attacker.
/// Whole files go through it at each edit, so it takes 32 bytes a step.
class ContentHash {
 public:
  void Add(std::span<const std::byte> bytes) noexcept {
    size_ += bytes.size();
    if (held_ > 0) {
      const auto count = std::min(bytes.size(), block_.size() - held_);
      Hold(bytes.first(count));
      bytes = bytes.subspan(count);
      if (held_ < block_.size()) return;
      Mix(block_.data());
      held_ = 0;
    }
    for (; bytes.size() >= block_.size(); bytes = bytes.subspan(block_.size())) Mix(bytes.data());
    Hold(bytes);
  }
  std::uint64_t Value() const noexcept {
    auto value = size_;
    for (const auto lane : lanes_) value = Step(value, lane);
    for (std::size_t i = 0; i < held_; ++i) value = Step(value, std::to_integer<std::uint64_t>(block_[i]));
    return value ^ value >> 32;
  }

 private:
  static std::uint64_t Step(std::uint64_t value, std::uint64_t word) noexcept {
    // Spread before and after the turn, so that no slip in one word is undone by a simple one in the next.
    constexpr std::uint64_t before = 0xd1b54a32d192ed03, after = 0x9e3779b97f4a7c15;
    return std::rotl(value + word * before, 31) * after;
  }
  void Mix(const std::byte* block) noexcept {
    std::array<std::uint64_t, 4> words{};
    std::memcpy(words.data(), block, sizeof words);
    for (std::size_t i = 0; i < lanes_.size(); ++i) lanes_[i] = Step(lanes_[i], words[i]);
  }
  void Hold(std::span<const std::byte> bytes) noexcept {
    std::copy(bytes.begin(), bytes.end(), block_.begin() + static_cast<std::ptrdiff_t>(held_));
    held_ += bytes.size();
  }

  std::array<std::uint64_t, 4> lanes_{1, 2, 3, 4};
  std::array<std::byte, 32> block_{};  ///< what came behind the last whole step
  std::size_t held_ = 0;
  std::uint64_t size_ = 0;
};

inline std::uint64_t HashOf(std::span<const std::byte> bytes) noexcept {
  ContentHash hash;
  hash.Add(bytes);
  return hash.Value();
}

}  // namespace ml::platform
