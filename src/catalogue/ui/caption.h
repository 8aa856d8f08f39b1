#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace ml::catalogue::ui {

/// Width of a text (UTF-8) in whatever unit the caller counts.
using TextWidth = std::function<double(const std::string&)>;

/// What stands under a thumbnail, at most `room` wide: the name with its extension, else the stem, else the
/// stem cut to its first characters with "..." behind, at least three of them; empty if not even that fits.
/// `path` is bytes, the result is UTF-8.
std::string CutCaption(std::string_view path, double room, const TextWidth& width);

}  // namespace ml::catalogue::ui
