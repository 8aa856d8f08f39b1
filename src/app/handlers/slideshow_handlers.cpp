#include <QScopeGuard>
#include <exception>
#include <string>

#include "app/command_runner.h"
#include "app/edit_messages.h"
#include "app/handlers/turn_image.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "batch/ui/slideshow_window.h"
#include "metadata/format_strings/format_strings.h"
#include "options/engine_options.h"
#include "platform/ui/qt_interaction.h"

namespace ml::app {
namespace {

using batch::SlideshowState;
using batch::ui::SlideshowHost;
using batch::ui::SlideshowPictures;

/// Several images chosen in the list are a show of their own; otherwise it is of all.
std::vector<std::string> ImagesFor(const Session& session) {
  const auto& list = session.list;
  const bool chosen = session.mode != ViewMode::Main && list.SelectedCount() > 1;
  return chosen ? list.SelectedPaths() : list.files;
}

SlideshowState StateFrom(const Session& session) {
  const auto& from = session.settings.slideshow;
  SlideshowState state;
  state.interval = from.interval;
  state.formatString = from.formatString;
  state.bottomCaption = from.bottomCaption != 0;
  state.showCaption = from.showCaption != 0;
  state.highQuality = session.settings.display.highQualityMode != 0;
  state.blackAndWhite = session.memory.blackAndWhite;
  state.allImages = ImagesFor(session);
  return state;
}

void HandBack(const SlideshowState& state, CommandContext& context) {
  auto& session = context.session;
  auto& to = session.settings.slideshow;
  to.interval = state.interval;
  to.formatString = state.formatString;
  to.bottomCaption = state.bottomCaption ? 1 : 0;
  to.showCaption = state.showCaption ? 1 : 0;
  session.settings.display.highQualityMode = state.highQuality ? 1 : 0;
  auto& list = session.list;
  const int index = state.CurrentPath() != nullptr ? list.IndexOfPath(*state.CurrentPath()) : list.currentIndex;
  if (session.mode != ViewMode::Main && list.ValidIndex(index)) {
    if (IsFilmStrip(session.mode) || list.SelectedCount() < 2) list.SelectOnly(index);
    list.focusIndex = index;
  }
  context.view.LoadImage(index, Reload::Force);
  if (session.memory.blackAndWhite == state.blackAndWhite) return;
  session.memory.blackAndWhite = state.blackAndWhite;
  context.view.BlackAndWhiteChanged();
}

/// Tells of failures itself: nobody above the window could.
void TurnAndTell(CommandContext& context, const std::string& path, imaging::Turn turn, QWidget& window) {
  try {
    TurnImage(context, path, turn, window);
  } catch (const std::exception& error) {
    platform::ui::QtInteraction(&window).message(ErrorRotating(error.what()));
  }
}

SlideshowHost HostFor(CommandContext& context) {
  auto& session = context.session;
  const auto expand = [options = options::ExifOptionsOf(session.settings), locale = session.locale](
                          const std::string& path, const std::string& format) {
    metadata::ExifData exif(path, options);
    return metadata::ExpandFormatString(format, {exif, options, locale});
  };
  return {.making = {.file = session.ImageOptions(),
                     .colour = options::ColourOptionsOf(session.settings),
                     .expand = expand},
          .setTag = [&session](const auto& path, bool on) { session.list.SetTag(session.list.IndexOfPath(path), on); },
          .rotate = [&context](const auto& path, imaging::Turn turn,
                               QWidget& window) { TurnAndTell(context, path, turn, window); }};
}

/// Made for the first show, they live as long as the view: what is still being decoded when a show ends is waited for
/// by nobody.
SlideshowPictures& PicturesOf(CMarrowlanternView& view) {
  auto* pictures = view.findChild<SlideshowPictures*>(QString(), Qt::FindDirectChildrenOnly);
  return pictures != nullptr ? *pictures : *new SlideshowPictures(&view);
}

void RunSlideshow(CommandContext& context) {
  auto& session = context.session;
  auto state = StateFrom(session);
  if (state.allImages.empty()) return;
  const auto tagged = session.list.TaggedPaths();
  context.view.Display().Stop();
  // Thumbnails would take the processors from the pictures.
  session.Worker().GiveWay();
  const auto goOn = qScopeGuard([&] { session.Worker().GoOn(); });
  batch::ui::SlideshowWindow window(std::move(state), {tagged.begin(), tagged.end()}, HostFor(context),
                                    PicturesOf(context.view), &context.frame);
  window.exec();
  HandBack(window.State(), context);
}

constexpr HandlerRow kHandlers[] = {{CommandId::Slideshow, RunSlideshow}};

}  // namespace

std::span<const HandlerRow> SlideshowHandlers() { return kHandlers; }

}  // namespace ml::app
