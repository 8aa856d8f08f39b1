#include "app/double_click.h"

namespace ml::app {

CommandId DoubleClickCommand(int imageDoubleClickAction, ViewMode mode) {
  const auto between = [&](ViewMode home, CommandId away, CommandId back) { return mode == home ? away : back; };
  switch (imageDoubleClickAction) {
    case 1:
      return CommandId::ViewActualImage;
    case 2:
      return CommandId::EditImage;
    case 3:
      return between(ViewMode::Main, CommandId::FilmStripSide, CommandId::MainView);
    case 4:
      return between(ViewMode::Main, CommandId::FilmStripBelow, CommandId::MainView);
    case 5:
      return between(ViewMode::Thumbnails, CommandId::FilmStripSide, CommandId::ThumbnailView);
    case 6:
      return between(ViewMode::Thumbnails, CommandId::FilmStripBelow, CommandId::ThumbnailView);
    default:
      return CommandId::MainView;
  }
}

}  // namespace ml::app
