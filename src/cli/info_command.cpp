#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

#include "cli/commands.h"
#include "cli/exif_command.h"
#include "cli/iptc_items.h"
#include "metadata/exif_fields.h"

namespace ml::cli {
namespace {

using metadata::ExifData;
using metadata::ExifFieldValue;

Json JsonOf(const ExifFieldValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return JsonText(*text);
  return std::visit([](const auto& number) { return Json(number); }, value);
}

/// All that is known, and always whether the file is sound.
void PutFields(const ExifData& data, Json& object) {
  for (const auto& field : metadata::ExifFields()) {
    const auto value = field.value(data);
    if (metadata::HasContent(value) || field.name == "exifInvalid") object[std::string(field.name)] = JsonOf(value);
  }
  object["iptc"] = JsonOfIptc(data.iptc);
}

void PrintFields(const std::string& given, const ExifData& data) {
  PrintLine(given);
  for (const auto& field : metadata::ExifFields()) {
    const auto value = field.value(data);
    if (metadata::HasContent(value)) PrintLine("  " + std::string(field.name) + ": " + metadata::FieldText(value));
  }
  PrintIptc(data.iptc, "  iptc ");
}

}  // namespace

void AddInfoCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("info", "Show all that is known of images beside their pixels");
  auto files = std::make_shared<std::vector<std::string>>();
  command->add_option("files", *files, "Images")->required();
  command->callback([files, &state] {
    state.action = [files, &state] { ShowExif(*files, {PutFields, PrintFields}, state); };
  });
}

}  // namespace ml::cli
