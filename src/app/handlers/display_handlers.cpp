#include "app/command_runner.h"
#include "app/histogram_display.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "app/shooting_data_display.h"

namespace ml::app {
namespace {

void ToggleHistogram(CommandContext& context) { context.view.Histograms().ToggleWindow(); }
void ToggleShootingData(CommandContext& context) { context.view.ShootingData().ToggleWindow(); }
void OpenShootingData(CommandContext& context) { context.view.ShootingData().OpenWindow(); }

template <auto setting>
void ToggleAndReload(CommandContext& context) {
  auto& on = context.session.settings.display.*setting;
  on = on != 0 ? 0 : 1;
  context.view.ReloadImage();
}

using settings::DisplaySettings;
constexpr HandlerRow kHandlers[] = {
    {CommandId::Histogram, ToggleHistogram},
    {CommandId::ShootingData, ToggleShootingData},
    {CommandId::ImageProperties, OpenShootingData},
    {CommandId::ShowFocusPoints, ToggleAndReload<&DisplaySettings::showFocusPoints>},
    {CommandId::ShowFlashingHighlights, ToggleAndReload<&DisplaySettings::highlightBlink>},
};

}  // namespace

std::span<const HandlerRow> DisplayHandlers() { return kHandlers; }

}  // namespace ml::app
