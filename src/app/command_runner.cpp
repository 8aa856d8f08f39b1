#include "app/command_runner.h"

#include <exception>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "platform/errors.h"

namespace ml::app {

CommandRunner::CommandRunner(Session& session, CMarrowlanternView& view, CMainFrame& frame)
    : session_(session), view_(view), frame_(frame) {
  for (const auto group :
       {CatalogueHandlers(), OrderHandlers(), TagHandlers(), ViewHandlers(), DisplayHandlers(), HelpHandlers()}) {
    for (const auto& row : group) {
      auto& place = handlers_.at(static_cast<std::size_t>(row.id));
      if (place) throw std::logic_error("two handlers: " + std::string(FindCommand(row.id).text));
      place = row.run;
    }
  }
  for (int id = 0; id < kCommandCount; ++id) {
    const auto& row = FindCommand(static_cast<CommandId>(id));
    if (!handlers_[static_cast<std::size_t>(id)]) throw std::logic_error("no handler: " + std::string(row.text));
  }
}

void CommandRunner::Run(CommandId id, int argument) {
  Do([&] {
    if (!FindCommand(id).enabled(session_.State())) return;
    CommandContext context{session_, view_, frame_, argument};
    handlers_[static_cast<std::size_t>(id)](context);
  });
}

void CommandRunner::Do(const std::function<void()>& act) {
  try {
    act();
  } catch (const platform::Cancelled&) {
    // The user knows.
  } catch (const std::exception& error) {
    session_.Ask().message({.text = error.what(), .caption = "Error", .icon = platform::BoxIcon::Error});
  }
  frame_.UpdateAll();
}

}  // namespace ml::app
