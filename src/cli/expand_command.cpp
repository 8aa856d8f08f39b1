#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/exif_command.h"
#include "metadata/format_strings/format_strings.h"
#include "options/engine_options.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::cli {
namespace {

using metadata::ExifData;

struct Arguments {
  std::string format;
  std::vector<std::string> files;
  bool describe = false;
};

void PrintText(const std::string& text) {
  for (const auto line : platform::SplitLines(text)) PrintLine(line);
}

/// The text is the same for all images, so none is read.
void Describe(const Arguments& arguments, const RunState& state) {
  const auto text = metadata::DescribeFormatString(arguments.format);
  if (!state.json) return PrintText(text);
  auto result = Json::array();
  for (const auto& given : arguments.files) {
    PutPath(result.emplace_back(Json::object()), "path", given);
    result.back()["text"] = JsonText(text);
  }
  if (result.empty()) result.push_back({{"text", JsonText(text)}});
  PrintJson(result);
}

void Expand(const Arguments& arguments, RunState& state) {
  if (arguments.files.empty()) throw WrongUsage("name the images that the text is for");
  const auto options = options::ExifOptionsOf(state.settings);
  const auto locale = platform::LocaleText::FromEnvironment();
  const auto expand = [&](ExifData& data) {
    data.path = platform::AbsolutePath(data.path);
    data.displayPath = platform::AbsolutePath(data.displayPath);
    return metadata::ExpandFormatString(arguments.format, {data, options, locale});
  };
  const auto toJson = [&](ExifData& data, Json& object) { object["text"] = JsonText(expand(data)); };
  const auto toPeople = [&](const std::string&, ExifData& data) { PrintText(expand(data)); };
  ShowExif(arguments.files, {toJson, toPeople}, state);
}

}  // namespace

void AddExpandCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("expand", "Write a text with tokens such as @iso@ as it reads for each image");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("format", arguments->format, "The text")->required();
  command->add_option("files", arguments->files, "Images");
  command->add_flag("--describe", arguments->describe, "Write what the tokens stand for instead");
  command->callback([arguments, &state] {
    state.action = [arguments, &state] {
      arguments->describe ? Describe(*arguments, state) : Expand(*arguments, state);
    };
  });
}

}  // namespace ml::cli
