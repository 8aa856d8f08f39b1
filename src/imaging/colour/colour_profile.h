#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace ml::imaging {

/// Longest profile that is opened, in bytes.
inline constexpr std::size_t kMaxColourProfile = std::size_t{8} << 20;

/// An open ICC profile; false where there is none to use, for whatever reason. Belongs to the thread that opened it.
class ColourProfile {
 public:
  /// That of a file. Never throws: what is missing, too long or no profile opens as nothing.
  static ColourProfile FromFile(const std::string& path);
  /// That in a copy of `bytes`.
  static ColourProfile FromMemory(std::span<const std::byte> bytes);
  /// The built-in one, which needs no file.
  static ColourProfile Srgb();

  ColourProfile() = default;
  ColourProfile(ColourProfile&& other) noexcept;
  ColourProfile& operator=(ColourProfile&& other) noexcept;
  ~ColourProfile();

  explicit operator bool() const { return handle_ != nullptr; }
  /// Whether its device colours are red, green and blue; only those are transformed.
  bool IsRgb() const;
  /// Its name for people, one line of UTF-8; empty if it has none.
  std::string Description() const;
  /// As a file holds it; empty if it cannot be written.
  std::vector<std::byte> Bytes() const;

 private:
  friend class ColourTransform;
  explicit ColourProfile(void* handle) : handle_(handle) {}

  void* handle_ = nullptr;
};

}  // namespace ml::imaging
