#include "imaging/colour/colour_profile.h"

#include <lcms2.h>

#include <algorithm>
#include <utility>

#include "platform/errors.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace ml::imaging {
namespace {

constexpr std::size_t kLongestName = 200;  ///< characters; a broken profile may claim millions

/// A profile is good or it is not: what the library has to say about it helps nobody.
void BeSilent() {
  static const bool silent = [] {
    cmsSetLogErrorHandler([](cmsContext, cmsUInt32Number, const char*) {});
    return true;
  }();
  static_cast<void>(silent);
}

std::string Utf8(std::span<const wchar_t> name) {
  std::string text;
  for (const auto character : name) {
    if (character == 0) break;
    const auto point = static_cast<char32_t>(character);
    const bool scalar = point < 0x110000 && (point < 0xd800 || point > 0xdfff);
    platform::AppendUtf8(text, scalar ? point : U'\ufffd');
  }
  return text;
}

}  // namespace

ColourProfile ColourProfile::FromFile(const std::string& path) {
  try {
    return FromMemory(platform::ReadFile(path, kMaxColourProfile));
  } catch (const platform::UserError&) {
    return {};  // the picture simply stays as it is
  }
}

ColourProfile ColourProfile::FromMemory(std::span<const std::byte> bytes) {
  if (bytes.empty() || bytes.size() > kMaxColourProfile) return {};
  BeSilent();
  return ColourProfile(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
}

ColourProfile ColourProfile::Srgb() {
  BeSilent();
  return ColourProfile(cmsCreate_sRGBProfile());
}

ColourProfile::ColourProfile(ColourProfile&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

ColourProfile& ColourProfile::operator=(ColourProfile&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

ColourProfile::~ColourProfile() {
  if (handle_ != nullptr) cmsCloseProfile(handle_);
}

bool ColourProfile::IsRgb() const { return handle_ != nullptr && cmsGetColorSpace(handle_) == cmsSigRgbData; }

std::string ColourProfile::Description() const {
  if (handle_ == nullptr) return {};
  std::vector<wchar_t> name(kLongestName + 1);
  const auto size = static_cast<cmsUInt32Number>(name.size() * sizeof(wchar_t));
  if (cmsGetProfileInfo(handle_, cmsInfoDescription, "en", "US", name.data(), size) == 0) return {};
  return std::string(platform::Trim(platform::ToDisplayLine(Utf8(name))));
}

std::vector<std::byte> ColourProfile::Bytes() const {
  cmsUInt32Number size = 0;
  if (handle_ == nullptr || !cmsSaveProfileToMem(handle_, nullptr, &size)) return {};
  std::vector<std::byte> bytes(size);
  if (!cmsSaveProfileToMem(handle_, bytes.data(), &size)) return {};
  return bytes;
}

}  // namespace ml::imaging
