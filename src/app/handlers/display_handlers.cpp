#include "app/command_runner.h"
#include "app/histogram_display.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"

namespace ml::app {
namespace {

void ToggleHistogram(CommandContext& context) { context.view.Histograms().ToggleWindow(); }

template <auto setting>
void ToggleAndReload(CommandContext& context) {
  auto& on = context.session.settings.display.*setting;
  on = on != 0 ? 0 : 1;
  context.view.ReloadImage();
}

using settings::DisplaySettings;
constexpr HandlerRow kHandlers[] = {
    {CommandId::Histogram, ToggleHistogram},
    {CommandId::ShowFocusPoints, ToggleAndReload<&DisplaySettings::showFocusPoints>},
    {CommandId::ShowFlashingHighlights, ToggleAndReload<&DisplaySettings::highlightBlink>},
};

}  // namespace

std::span<const HandlerRow> DisplayHandlers() { return kHandlers; }

}  // namespace ml::app
