#include <optional>

#include "app/command_runner.h"
#include "app/file_dialogs.h"
#include "app/image_texts.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/messages.h"
#include "app/preferences/preference_changes.h"
#include "app/preferences/ui/preferences_dialog.h"
#include "app/session.h"
#include "imagefiles/profile_finder.h"
#include "options/engine_options.h"

namespace ml::app {
namespace {

constexpr const char* kPlaceName = "Preferences";

std::optional<std::string> BrowseForProfile(QWidget& parent, const std::string& path) {
  const auto answer = OpenFile(parent, {.title = std::string(kChooseProfileTitle),
                                        .filter = std::string(kProfileFilter),
                                        .start = path.empty() ? imagefiles::kSystemProfiles : path});
  if (!answer) return std::nullopt;
  return answer->path;
}

void ReloadDirectory(CommandContext& context) {
  const auto top = context.view.TopPath();
  context.session.Images().RefreshDirectory();
  context.view.ScrollToTop(top);
}

/// The one place that brings a running program in line with edited settings. The worker has a copy of what it goes by,
/// which is replaced while it stands still; what is made later is made by the new one.
void TakeOver(const settings::Settings& edited, CommandContext& context) {
  auto& session = context.session;
  auto& view = context.view;
  const auto effects = EffectsOf(session.settings, edited);
  TakePreferences(edited, session.settings);
  session.Images().SetOptions(options::CatalogueOptionsOf(session.settings));
  if (effects.Has(Effect::RedrawThumbnails) || effects.Has(Effect::RedrawHistogram) ||
      effects.Has(Effect::ReloadDirectory)) {
    view.SettingsChanged();
  }
  if (effects.Has(Effect::RemakeThumbnails)) session.RemakeThumbnails();
  if (effects.Has(Effect::ResizeThumbnails)) view.ThumbnailSizeChanged();
  if (effects.Has(Effect::ReloadDirectory)) ReloadDirectory(context);
  if (effects.Has(Effect::ReloadPicture)) view.ReloadImage();
}

std::optional<std::string> ExampleOf(const Session& session, TextForm form, const std::string& format) {
  if (session.TargetIndex() < 0) return std::nullopt;
  return form == TextForm::Line ? ExpandedLine(session, format) : ExpandedText(session, format);
}

void ShowPreferences(CommandContext& context) {
  auto& session = context.session;
  auto& place = session.settings.dialogPlaces[kPlaceName];
  CPreferencesDialog* self = nullptr;
  CPreferencesDialog dialog(
      session.settings,
      {[&self](const std::string& path) { return BrowseForProfile(*self, path); },
       [&session](TextForm form, const std::string& format) { return ExampleOf(session, form, format); }},
      &context.frame);
  self = &dialog;
  QObject::connect(&dialog, &CPreferencesDialog::applied, &context.frame, [&](const settings::Settings& edited) {
    context.frame.Runner().Do([&] { TakeOver(edited, context); });
  });
  dialog.restoreGeometry(QByteArray(place.data(), static_cast<qsizetype>(place.size())));
  dialog.ShowPage(session.memory.preferencesPage);
  dialog.exec();
  place = dialog.saveGeometry().toStdString();
  session.memory.preferencesPage = dialog.Page();
}

constexpr HandlerRow kHandlers[] = {{CommandId::Preferences, ShowPreferences}};

}  // namespace

std::span<const HandlerRow> PreferencesHandlers() { return kHandlers; }

}  // namespace ml::app
