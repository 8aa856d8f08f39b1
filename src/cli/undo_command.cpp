#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commands.h"
#include "cli/kept_marks.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "platform/dates.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/user_journal.h"

namespace ml::cli {
namespace {

using platform::JournalEntry;

struct UndoArguments {
  bool list = false, dryRun = false;
};

Json FilesOf(const std::vector<std::string>& files) {
  auto array = Json::array();
  for (const auto& file : files) array.push_back(JsonText(file));
  return array;
}

/// Files that stay as they are have a list of their own.
Json ObjectOf(const JournalEntry& entry) {
  return {{"id", entry.id},
          {"what", JsonText(entry.what)},
          {"when", entry.when},
          {"files", FilesOf(entry.files)},
          {"notUndoable", FilesOf(entry.notUndoable)}};
}

std::string Line(const JournalEntry& entry) {
  const auto count = entry.files.size();
  auto line = platform::ExifDateText(entry.when) + " " + entry.what + ", " + std::to_string(count) +
              (count == 1 ? " file" : " files");
  if (!entry.notUndoable.empty()) line += ", " + std::to_string(entry.notUndoable.size()) + " cannot be undone";
  return line;
}

std::vector<JournalEntry> Entries(const UndoArguments& arguments, platform::EditJournal& journal) {
  if (!arguments.list && !arguments.dryRun) return {journal.Undo()};
  auto entries = journal.List();
  if (!arguments.list && entries.empty()) throw platform::UserError(platform::messages::kNothingToUndo);
  if (!arguments.list) entries.resize(1);
  return entries;
}

void RunUndo(const UndoArguments& arguments, RunState& state) {
  platform::UserJournal journal;
  std::vector<JournalEntry> entries;
  try {
    entries = Entries(arguments, journal.Edits());
  } catch (const platform::UserError& error) {
    state.Fail(error.what());
  }
  if (!arguments.list && !arguments.dryRun && !entries.empty()) {
    LetMarksFollow(catalogue::PathsTakenBack(entries.front().renames), state);
  }
  auto result = Json::array();
  const std::string_view verb = arguments.list ? "" : (arguments.dryRun ? "would undo: " : "undone: ");
  for (const auto& entry : entries) {
    result.push_back(ObjectOf(entry));
    if (!state.json) PrintLine(std::string(verb) + Line(entry));
    if (arguments.list) continue;
    for (const auto& file : entry.notUndoable) state.Fail(file + ": stays as it is, this cannot be undone");
  }
  if (state.json) PrintJson({{"entries", result}});
}

}  // namespace

void AddUndoCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("undo", "Take back what the latest command has done to files");
  auto arguments = std::make_shared<UndoArguments>();
  command->add_flag("--list", arguments->list, "Only tell what can be undone, latest first");
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be undone");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunUndo(*arguments, state); }; });
}

}  // namespace ml::cli
