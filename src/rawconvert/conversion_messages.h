#pragma once

/// What a conversion says while it works.
namespace ml::rawconvert::messages {

inline constexpr char kConverting[] = "Converting raw file...";
inline constexpr char kHighlights[] = "Converting raw image for highlights...";
inline constexpr char kCombining[] = "Combining images...";
inline constexpr char kReducingNoise[] = "Applying Smart Noise Reduction Filter...";
inline constexpr char kAutoLevels[] = "Auto levels...";
inline constexpr char kManualLevels[] = "Adjusting levels...";
inline constexpr char kResizing[] = "Resizing image...";
inline constexpr char kUnsharpMask[] = "Applying unsharp mask...";
inline constexpr char kHqSharpening[] = "Applying HQ style sharpening...";
inline constexpr char kWriting[] = "Writing image...";

inline constexpr char kNoProfile[] = "Profile file does not exist:\n";

}  // namespace ml::rawconvert::messages
