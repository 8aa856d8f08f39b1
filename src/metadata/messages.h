#pragma once

/// What the readers of this module say when they give up; users see these where an edit needs the file whole.
namespace ml::metadata::messages {

inline constexpr char kCrwHeaderCut[] = "End of file reached reading header";
inline constexpr char kCrwAlignment[] = "Invalid alignment - expecting 'II' or 'MM'";
inline constexpr char kCrwEntries[] = "numEntries > 20";
inline constexpr char kCrwSeek[] = "fseek() error extracting picture info";
inline constexpr char kCrwPictureData[] = "End of file reached trying to read picture data";

}  // namespace ml::metadata::messages
