#pragma once

#include <string>

namespace ml::rawconvert::nef_messages {

/// Each begins with the path of the file.
inline constexpr const char* kUnknownCamera = ": is no raw file of a camera that can be developed";
inline constexpr const char* kUnknownLayout = ": the raw data are stored in a way that is not known";
inline constexpr const char* kTooLarge = ": the sizes that the file states cannot be true";
inline constexpr const char* kCut = ": the file ends before its raw data";
inline constexpr const char* kDamaged = ": the raw data are damaged";

}  // namespace ml::rawconvert::nef_messages
