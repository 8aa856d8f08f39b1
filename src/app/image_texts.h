#pragma once

#include <string>
#include <string_view>

#include "app/session.h"

/// The lines that tell of the image on show. All are UTF-8 for display.
namespace ml::app {

/// A line for the image on show, from a format string that also knows its place in the list; empty without an image.
std::string ExpandedLine(const Session& session, std::string_view format);
/// Several lines; "\n" in the format string ends one.
std::string ExpandedText(const Session& session, std::string_view format);

/// What stands in the first pane of the status line.
std::string StatusText(const Session& session);
/// What the mode tells of the shooting data.
std::string SummaryText(const Session& session);
/// "IMG_1.JPG - Marrowlantern" with a picture on show, else the directory, else the program alone.
std::string TitleText(const Session& session);
/// What an empty list says: that nothing was opened yet, or what the directory holds instead of images.
std::string EmptyText(const Session& session);
/// "61 % made" while thumbnails are being made, else empty.
std::string ThumbnailsMadeText(const Session& session);

}  // namespace ml::app
