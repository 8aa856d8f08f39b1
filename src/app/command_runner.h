#pragma once

#include <functional>
#include <span>

#include "app/command_table.h"

namespace ml::app {

class CMainFrame;
class CMarrowlanternView;
class Session;

/// What a handler works on.
struct CommandContext {
  Session& session;
  CMarrowlanternView& view;
  CMainFrame& frame;
  int argument = 0;  ///< see CommandId
};

using Handler = void (*)(CommandContext&);
struct HandlerRow {
  CommandId id;
  Handler run;
};

/// The handlers, one file a group.
std::span<const HandlerRow> CatalogueHandlers();
std::span<const HandlerRow> ConvertHandlers();
std::span<const HandlerRow> DirectoryHandlers();
std::span<const HandlerRow> EditHandlers();
std::span<const HandlerRow> ExifToolHandlers();
std::span<const HandlerRow> FileHandlers();
std::span<const HandlerRow> OrderHandlers();
std::span<const HandlerRow> PreferencesHandlers();
std::span<const HandlerRow> ProgramHandlers();
std::span<const HandlerRow> RenameHandlers();
std::span<const HandlerRow> SlideshowHandlers();
std::span<const HandlerRow> TagHandlers();
std::span<const HandlerRow> ViewHandlers();
std::span<const HandlerRow> DisplayHandlers();
std::span<const HandlerRow> HelpHandlers();
std::span<const HandlerRow> IptcHandlers();

/// Whether this version can run the command; the others are in the table for what is to come. Throws
/// std::logic_error if a command has two handlers.
bool HasHandler(CommandId id);

/// Runs commands: refuses those that are off, shows the one box of those that fail, and brings the window up
/// to date afterwards.
class CommandRunner {
 public:
  CommandRunner(Session& session, CMarrowlanternView& view, CMainFrame& frame)
      : session_(session), view_(view), frame_(frame) {}
  /// Neither throws.
  void Run(CommandId id, int argument = 0);
  /// The same for what the user does in a pane.
  void Do(const std::function<void()>& act);

 private:
  Session& session_;
  CMarrowlanternView& view_;
  CMainFrame& frame_;
};

}  // namespace ml::app
