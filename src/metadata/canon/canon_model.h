#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "platform/paths.h"

/// The camera as its notes depend on it.
namespace ml::metadata {

/// Whether `part`, in lower case, stands in the model behind its first character, in any case.
inline bool ModelHolds(const std::string& model, std::string_view part) {
  const auto place = platform::AsciiLower(model).find(part);
  return place != std::string::npos && place > 0;
}
inline bool ModelHoldsAny(const std::string& model, std::span<const std::string_view> parts) {
  return std::ranges::any_of(parts, [&](auto part) { return ModelHolds(model, part); });
}

/// The EOS-1D and those named after it, which store some words with their bytes swapped.
inline bool IsEos1D(const std::string& model) { return ModelHolds(model, "eos-1d"); }
inline bool IsPowerShot(const std::string& model) { return ModelHolds(model, "powershot"); }

}  // namespace ml::metadata
