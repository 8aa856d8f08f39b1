#include "app/command_runner.h"
#include "app/marrowlantern_view.h"
#include "app/navigation.h"
#include "app/session.h"

namespace ml::app {
namespace {

template <ViewMode mode>
void Show(CommandContext& context) {
  context.view.SetViewMode(mode);
}

void Switch(CommandContext& context) {
  context.view.SetViewMode(context.session.mode == ViewMode::Main ? ViewMode::Thumbnails : ViewMode::Main);
}

/// From one arrangement to the other, and into the first from anywhere else.
void ShowFilmStrip(CommandContext& context) {
  auto& [session, view, frame, argument] = context;
  auto& list = session.list;
  if (session.mode == ViewMode::Main && list.ValidIndex(list.currentIndex) &&
      !list.marks[static_cast<std::size_t>(list.currentIndex)].selected) {
    list.SelectOnly(list.currentIndex);
    list.focusIndex = list.currentIndex;
  }
  view.OpenPanes();
  view.SetViewMode(session.mode == ViewMode::FilmStripSide ? ViewMode::FilmStripBelow : ViewMode::FilmStripSide);
}

void ShowExifData(CommandContext& context) {
  if (context.session.mode == ViewMode::FilmStripSide) return context.view.ToggleLowerPane();
  context.view.OpenPanes();
  context.view.SetViewMode(ViewMode::FilmStripSide);
}

template <int size>
void ShowSize(CommandContext& context) {
  context.session.settings.catalogue.thumbnailSize = size;
  context.view.ThumbnailSizeChanged();
  if (context.session.mode == ViewMode::Main) context.view.SetViewMode(ViewMode::Thumbnails);
}

void ToggleHighQuality(CommandContext& context) {
  auto& on = context.session.settings.display.highQualityMode;
  on = on ? 0 : 1;
  context.view.ReloadImage();
}

void ToggleBlackAndWhite(CommandContext& context) {
  context.session.memory.blackAndWhite = !context.session.memory.blackAndWhite;
  context.view.BlackAndWhiteChanged();
}

void ToggleControls(CommandContext& context) {
  auto& fullView = context.session.settings.catalogue.fullView;
  fullView = fullView ? 0 : 1;
  context.view.ApplyLayout();
}

void ToggleStatusBar(CommandContext& context) {
  context.session.memory.statusBarShown = !context.session.memory.statusBarShown;
}

template <int step>
void Go(CommandContext& context) {
  const auto& session = context.session;
  const bool wraparound = session.settings.catalogue.wraparound != 0;
  const int index = StepIndex(session.list.currentIndex, step, session.list.Count(), wraparound);
  if (index >= 0) context.view.LoadImage(index, Reload::IfOther);
}

void GoToFirst(CommandContext& context) { context.view.LoadImage(0, Reload::IfOther); }
void GoToLast(CommandContext& context) { context.view.LoadImage(context.session.list.Count() - 1, Reload::IfOther); }

void ToggleWraparound(CommandContext& context) {
  auto& on = context.session.settings.catalogue.wraparound;
  on = on ? 0 : 1;
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::MainView, Show<ViewMode::Main>},
    {CommandId::ThumbnailView, Show<ViewMode::Thumbnails>},
    {CommandId::FilmStripView, ShowFilmStrip},
    {CommandId::FilmStripSide, Show<ViewMode::FilmStripSide>},
    {CommandId::FilmStripBelow, Show<ViewMode::FilmStripBelow>},
    {CommandId::ShowExifData, ShowExifData},
    {CommandId::ToggleView, Switch},
    {CommandId::SmallThumbnails, ShowSize<0>},
    {CommandId::LargeThumbnails, ShowSize<1>},
    {CommandId::ExtraLargeThumbnails, ShowSize<2>},
    {CommandId::HighQuality, ToggleHighQuality},
    {CommandId::BlackAndWhite, ToggleBlackAndWhite},
    {CommandId::ShowControls, ToggleControls},
    {CommandId::StatusBar, ToggleStatusBar},
    {CommandId::PreviousImage, Go<-1>},
    {CommandId::NextImage, Go<1>},
    {CommandId::FirstImage, GoToFirst},
    {CommandId::LastImage, GoToLast},
    {CommandId::Wraparound, ToggleWraparound},
};

}  // namespace

std::span<const HandlerRow> ViewHandlers() { return kHandlers; }

}  // namespace ml::app
