#include "app/command_runner.h"
#include "app/iptc_sheet.h"
#include "app/main_frame.h"
#include "app/session.h"

namespace ml::app {
namespace {

constexpr const char* kPlaceName = "IptcData";

void EditIptc(CommandContext& context) {
  auto& session = context.session;
  const auto sheet = MakeIptcSheet(session, context.frame);
  if (!sheet) return;
  auto& place = session.settings.dialogPlaces[kPlaceName];
  sheet->restoreGeometry(QByteArray(place.data(), static_cast<qsizetype>(place.size())));
  sheet->ShowPage(session.memory.iptcPage);
  sheet->exec();
  // Closed together with its question, the sheet may take the keys with it: the window manager meant them for it.
  context.frame.activateWindow();
  place = sheet->saveGeometry().toStdString();
  session.memory.iptcPage = sheet->Page();
  TakeIptcRules(sheet->Rules(), session);
}

constexpr HandlerRow kHandlers[] = {{CommandId::EditIptcData, EditIptc}};

}  // namespace

std::span<const HandlerRow> IptcHandlers() { return kHandlers; }

}  // namespace ml::app
