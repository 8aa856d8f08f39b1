#pragma once

#include <QColor>
#include <string_view>

namespace ml::catalogue::ui {

/// The colours of the thumbnail list. The field names are those of the scheme table.
struct ThumbnailColours {
  QColor backgroundColour, selectedFocusColour, selectedNoFocusColour, unselectedColour;
  QColor frameLightColour, frameDarkColour;
  QColor defaultTextColour, selectedTextColour;
  QColor jpegTextColour, jpeg2000TextColour, tiffTextColour, rawTextColour, aviTextColour, nefTextColour;
  QColor pngTextColour, psdTextColour;
  QColor tagOutlineColour;
};

/// The scheme called `name` in any case: "white", "border" ("grey", "gray"), anything else is black.
const ThumbnailColours& SchemeColours(std::string_view name);

/// What the list knows of a file by its extension.
struct ThumbnailKind {
  std::string_view word;                           ///< for people who hear the list: "raw", "JPEG"
  QColor ThumbnailColours::*textColour = nullptr;  ///< null: the default, or the selected colour
};
ThumbnailKind KindOfFile(std::string_view path);

}  // namespace ml::catalogue::ui
