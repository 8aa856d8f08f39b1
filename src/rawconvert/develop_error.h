#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace ml::rawconvert {

/// The development engine failed; what() names the code for a log. Whoever reports it makes the sentence, with
/// RawFileComplaint() where the code tells of the file. A cancel is never one of these but platform::Cancelled.
class DevelopError : public std::runtime_error {
 public:
  explicit DevelopError(std::uint32_t code);
  std::uint32_t Code() const noexcept { return code_; }

 private:
  std::uint32_t code_;
};

/// Codes of the development engine, of which only the low 16 bits are looked at.
namespace develop_code {
inline constexpr std::uint32_t kInvalid = 2;
inline constexpr std::uint32_t kUnsupported = 7;
inline constexpr std::uint32_t kCorrupt = 0x2D;
}  // namespace develop_code

/// "0x5000002".
std::string CodeText(std::uint32_t code);
/// What the code says about the file, with the line's end: it is damaged, or its format is not supported. Empty for
/// all other codes.
std::string RawFileComplaint(std::uint32_t code, const std::string& model);

/// The camera image engine failed. what() is the code's name.
class CameraImageError : public std::runtime_error {
 public:
  explicit CameraImageError(std::uint32_t code);
  std::uint32_t Code() const noexcept { return code_; }

 private:
  std::uint32_t code_;
};

/// "cdFILE_NOT_FOUND", or "Undefined CDSDK error" for a code that does not exist.
std::string CameraImageErrorText(std::uint32_t code);

}  // namespace ml::rawconvert
