#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace ml::platform {

/// 64-bit FNV-1a over bytes that come in pieces: against slips and crashes, not against an attacker.
class ContentHash {
 public:
  void Add(std::span<const std::byte> bytes) noexcept {
    for (const auto byte : bytes) value_ = (value_ ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001b3U;
  }
  std::uint64_t Value() const noexcept { return value_; }

 private:
  std::uint64_t value_ = 0xcbf29ce484222325U;
};

inline std::uint64_t HashOf(std::span<const std::byte> bytes) noexcept {
  ContentHash hash;
  hash.Add(bytes);
  return hash.Value();
}

}  // namespace ml::platform
