#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/exif_command.h"
#include "metadata/exif_text.h"
#include "platform/text.h"

namespace ml::cli {
namespace {

using metadata::ExifData;
using TextMaker = std::string (*)(ExifData& data, const platform::LocaleText& locale);

const std::map<std::string, TextMaker>& TextMakers() {
  static const std::map<std::string, TextMaker> makers = {
      {"properties", metadata::GetPropertiesText},
      {"summary", [](ExifData& data, const auto& locale) { return GetSummaryText(data, locale); }},
      {"short", [](ExifData& data, const auto& locale) { return GetShortSummaryText(data, locale); }}};
  return makers;
}

}  // namespace

void AddTextCommand(CLI::App& program, RunState& state) {
  struct Arguments {
    std::vector<std::string> files;
    std::string form = "properties";
  };
  auto* command = program.add_subcommand("text", "Write the shooting data of images as the window shows them");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("files", arguments->files, "Images")->required();
  command->add_option("--as", arguments->form, "properties, summary or short")->check(CLI::IsMember(TextMakers()));
  command->callback([arguments, &state] {
    state.action = [arguments, &state] {
      const auto make = TextMakers().at(arguments->form);
      const auto locale = platform::LocaleText::FromEnvironment();
      const auto toJson = [&](ExifData& data, Json& object) { object["text"] = JsonText(make(data, locale)); };
      const auto toPeople = [&](const std::string& given, ExifData& data) {
        if (arguments->files.size() > 1) PrintLine(given);
        const auto text = make(data, locale);
        for (const auto line : platform::SplitLines(text)) PrintLine(line);
        if (arguments->files.size() > 1) PrintLine("");
      };
      ShowExif(arguments->files, {toJson, toPeople}, state);
    };
  });
}

}  // namespace ml::cli
