#pragma once

#include <memory>

#include "metadata/ui/iptc_property_sheet.h"

namespace ml::app {

class Session;

/// The sheet over the target image. It goes through the selected images if there are several, else through all, and
/// leaves out those that hold no IPTC data; `session` outlives it. Null without such an image.
std::unique_ptr<metadata::ui::CIptcPropertySheet> MakeIptcSheet(Session& session, QWidget& parent);

/// What the sheet was told about writing many images, back into the settings.
void TakeIptcRules(const metadata::ui::IptcBatchRules& rules, Session& session);

}  // namespace ml::app
