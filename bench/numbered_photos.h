#pragma once

#include <optional>
#include <string>

namespace ml::bench {

/// Width and height of the photos.
inline constexpr int kPhotoWidth = 4000, kPhotoHeight = 3000;

enum class Previews { Without, With };

/// Writes `count` (at most 100) JPEG files of 12 megapixels and 3 MB into `directory`, which is made: IMG_0001.JPG and
/// so on. The colour in the middle of each tells its number. Throws std::runtime_error.
void WriteNumberedPhotos(const std::string& directory, int count, Previews previews);

/// The number, from 0, of the photo with this colour (0..255) in its middle; nothing if it is none of them.
std::optional<int> NumberOfMiddle(int red, int green, int blue);

/// Writes the file IMG_0001.JPG for number 0, and so on. Throws std::runtime_error.
void WriteNumberedFile(const std::string& directory, int number, const std::string& content);

}  // namespace ml::bench
