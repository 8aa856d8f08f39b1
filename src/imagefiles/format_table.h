#pragma once

#include <array>
#include <span>
#include <string_view>

/// The list of the image formats: the one place that knows which names are images. A file's type is told by
/// its extension alone.
namespace ml::imagefiles {

/// One row a format.
struct FormatRow {
  std::string_view className;
  std::array<std::string_view, 3> extensions;  ///< lower case, with the dot; "" is unused
  /// Companions by extension that belong to a file of this format, beside ".txt" and ".wav", which may
  /// belong to any.
  bool hasThm = false;
  /// Whether a name given on the command line of the window program is taken.
  bool openByName = true;
};

/// In the order of the extension tests.
std::span<const FormatRow> Formats();

/// The row that `path` belongs to by its extension, any case; null if it is no image. An extension of four
/// letters needs a name in front of it: "a.jpeg" is an image, ".jpeg" is not.
const FormatRow* FindFormat(std::string_view path);

bool IsJpegName(std::string_view path);
bool IsTiffName(std::string_view path);
/// Sort rank of the extension, 0..14, see the table; unknown extensions rank with ".psd".
int FileTypeRank(std::string_view path);

}  // namespace ml::imagefiles
