#pragma once

/// What readers and writers of several formats say of a picture.
namespace ml::imaging::messages {

inline constexpr char kNoPixels[] = "The picture has no pixels";
inline constexpr char kPictureTooLarge[] = "The picture is too large";
inline constexpr char kUnknownLayout[] = "The picture has an unknown layout";
inline constexpr char kUndecodable[] = "The picture cannot be decoded";
inline constexpr char kFileEndsEarly[] = "The file ends before its picture";
inline constexpr char kBitmapCutShort[] = "The bitmap is cut short";

}  // namespace ml::imaging::messages
