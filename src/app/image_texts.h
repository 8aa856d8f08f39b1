#pragma once

#include <string>

#include "app/session.h"

/// The lines that tell of the image on show. All are UTF-8 for display.
namespace ml::app {

/// What stands in the first pane of the status line: name and place in the list; empty without an image.
std::string StatusText(const Session& session);
/// Several lines: the summary of the shooting data; empty without an image.
std::string SummaryText(Session& session);
/// "IMG_1.JPG - Marrowlantern" with a picture on show, else the directory, else the program alone.
std::string TitleText(const Session& session);
/// What an empty list says: that nothing was opened yet, or what the directory holds instead of images.
std::string EmptyText(const Session& session);
/// "61 % made" while thumbnails are being made, else empty.
std::string ThumbnailsMadeText(const Session& session);

}  // namespace ml::app
