#pragma once

namespace ml::app {

enum class IconId {
  Open,
  Up,
  MainView,
  Thumbnails,
  FilmStrip,
  FilmStripBelow,
  Tag,
  RotateLeft,
  RotateRight,
  Previous,
  Next,
  Sort,
  Refresh,
  Delete,
  SizeSmall,
  SizeLarge,
  SizeExtraLarge,
};

}  // namespace ml::app
