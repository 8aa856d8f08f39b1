#include "app/command_runner.h"

#include <array>
#include <exception>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "platform/errors.h"

namespace ml::app {
namespace {

using HandlerTable = std::array<Handler, kCommandCount>;

HandlerTable CollectHandlers() {
  HandlerTable handlers{};
  for (const auto group :
       {CatalogueHandlers(), ConvertHandlers(), DirectoryHandlers(), EditHandlers(), ExifToolHandlers(), FileHandlers(),
        IptcHandlers(), OrderHandlers(), PreferencesHandlers(), ProgramHandlers(), RenameHandlers(),
        SlideshowHandlers(), TagHandlers(), ViewHandlers(), DisplayHandlers(), HelpHandlers()}) {
    for (const auto& row : group) {
      auto& place = handlers.at(static_cast<std::size_t>(row.id));
      if (place) throw std::logic_error("two handlers: " + std::string(FindCommand(row.id).text));
      place = row.run;
    }
  }
  return handlers;
}

Handler HandlerOf(CommandId id) {
  static const HandlerTable handlers = CollectHandlers();
  return handlers.at(static_cast<std::size_t>(id));
}

}  // namespace

bool HasHandler(CommandId id) { return HandlerOf(id) != nullptr; }

void CommandRunner::Run(CommandId id, int argument) {
  Do([&] {
    const auto run = HandlerOf(id);
    if (!run || !FindCommand(id).enabled(session_.State())) return;
    CommandContext context{session_, view_, frame_, argument};
    run(context);
  });
}

void CommandRunner::Do(const std::function<void()>& act) {
  try {
    act();
  } catch (const platform::Cancelled&) {
    // The user knows.
  } catch (const std::exception& error) {
    session_.Ask().message({.text = error.what(), .icon = platform::BoxIcon::Error});
  }
  frame_.UpdateAll();
}

}  // namespace ml::app
