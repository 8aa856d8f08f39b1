#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/iptc_items.h"
#include "cli/iptc_writing.h"
#include "cli/run_state.h"
#include "metadata/exif_data.h"
#include "metadata/iptc/iptc_file.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/readable_file.h"

namespace ml::cli {
namespace {

using metadata::IptcItem;

struct IptcArguments {
  std::vector<std::string> files;
  std::string save;
  bool overwrite = false, dryRun = false;
  IptcChange change;
};

/// Of an image, or of a file that holds nothing else. Throws UserError.
std::vector<IptcItem> ReadIptc(const std::string& path) {
  if (metadata::IsIptcFile(path)) return metadata::LoadIptcFile(path);
  const platform::ReadableFile readable(path);  // the record itself is silent about a file it may not open
  return metadata::ExifData(path).iptc;
}

void Save(const IptcArguments& arguments, const std::vector<IptcItem>& items) {
  const auto path = platform::AbsolutePath(arguments.save);
  if (platform::IsNameTaken(path)) {
    if (platform::SameFile(path, platform::AbsolutePath(arguments.files.front()))) {
      throw platform::UserError(arguments.save + ": is the file that was read, not written");
    }
    if (!arguments.overwrite) throw platform::UserError(arguments.save + ": exists, not written; choose --overwrite");
  }
  if (arguments.dryRun) return;
  const auto existing = arguments.overwrite ? platform::ExistingFile::Replace : platform::ExistingFile::Refuse;
  metadata::SaveIptcFile(path, items, existing);
}

/// Whether all went well is told under "ok", what did not under "message".
Json JsonOf(const std::string& given, const std::vector<IptcItem>& items, const std::string& message) {
  Json object;
  PutPath(object, "path", given);
  object["iptc"] = JsonOfIptc(items);
  object["ok"] = message.empty();
  object["message"] = JsonText(message);
  return object;
}

Json ShowOne(const std::string& given, const IptcArguments& arguments, RunState& state) {
  std::vector<IptcItem> items;
  std::string message;
  try {
    items = ReadIptc(platform::AbsolutePath(given));
    if (!arguments.save.empty()) Save(arguments, items);
  } catch (const platform::UserError& error) {
    message = error.what();
    state.Fail(message);
  }
  if (!state.json) {
    if (arguments.files.size() > 1) PrintLine(given);
    PrintIptc(items, arguments.files.size() > 1 ? "  " : "");
  }
  return JsonOf(given, items, message);
}

void Change(const IptcArguments& arguments, RunState& state) {
  if (!arguments.save.empty()) throw WrongUsage("--save goes with no change; save afterwards");
  GivenPaths given;
  std::vector<std::string> paths;
  for (const auto& file : arguments.files) paths.push_back(given.Add(file));
  const auto mode = arguments.dryRun ? imagefiles::WriteMode::DryRun : imagefiles::WriteMode::Write;
  auto json = Json::array();
  for (const auto& result : ChangeIptc(paths, arguments.change, mode, state)) {
    json.push_back(JsonOf(given.Of(result.path), result.items, result.failure));
    if (state.json || !result.failure.empty()) continue;
    const auto* done = arguments.dryRun ? ": would be written" : ": written";
    PrintLine(given.Of(result.path) + (result.changed ? done : ": unchanged"));
  }
  if (state.json) PrintJson(json);
  if (state.stop.stop_requested()) throw platform::Cancelled();
}

void ShowIptc(const IptcArguments& arguments, RunState& state) {
  if (!arguments.save.empty() && arguments.files.size() != 1) throw WrongUsage("--save takes one file");
  auto result = Json::array();
  for (const auto& given : arguments.files) {
    if (state.stop.stop_requested()) break;
    result.push_back(ShowOne(given, arguments, state));
  }
  if (state.json) PrintJson(result);
  if (state.stop.stop_requested()) throw platform::Cancelled();
}

}  // namespace

void AddIptcCommand(CLI::App& program, RunState& state) {
  auto* command =
      program.add_subcommand("iptc", "Show or change the IPTC data of images, or show those of files of such data");
  auto arguments = std::make_shared<IptcArguments>();
  command->add_option("files", arguments->files, "Images, or .ipt and .ffo files")->required();
  command->add_option("--save", arguments->save, "Write the data of the one file to this .ipt file");
  command->add_flag("--overwrite", arguments->overwrite, "Let --save replace a file");
  command->add_flag("--dry-run", arguments->dryRun, "Write nothing");
  AddIptcChangeOptions(*command, arguments->change);
  command->callback([arguments, &state] {
    state.action = [arguments, &state] {
      arguments->change.Asked() ? Change(*arguments, state) : ShowIptc(*arguments, state);
    };
  });
}

}  // namespace ml::cli
