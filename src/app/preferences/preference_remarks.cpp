#include "app/preferences/preference_remarks.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "app/preferences/messages.h"
#include "platform/errors.h"
#include "platform/numbers.h"
#include "platform/readable_file.h"
#include "platform/text.h"
#include "settings/setting_value.h"

namespace ml::app {
namespace {

Remark Refused(std::string text) { return {std::move(text), true}; }

Remark OnNumber(const NumberField& field, std::string_view value) {
  const auto number = platform::WholeNumber<int>(value);
  if (number && *number >= field.smallest && *number <= field.largest) return {};
  return Refused(NumberFromTo(field.smallest, field.largest));
}

Remark OnCommandLine(std::string_view value) {
  constexpr std::size_t kShortestProgram = 3;
  const auto line = platform::Trim(value);
  if (line.empty()) return {std::string(kNoCommandLine)};
  if (line.front() != '"') return {};
  const auto close = line.find('"', 1);
  if (close == std::string_view::npos) return Refused(std::string(kNoClosingQuotes));
  return close - 1 < kShortestProgram ? Refused(std::string(kProgramNameTooShort)) : Remark{};
}

/// Every profile has these letters at this place, whatever it describes.
bool IsProfile(const platform::ReadableFile& file) {
  constexpr std::string_view kSignature = "acsp";
  constexpr std::uint64_t kSignatureOffset = 36;
  std::array<std::byte, kSignature.size()> bytes{};
  return file.Read(kSignatureOffset, bytes) == bytes.size() &&
         std::memcmp(bytes.data(), kSignature.data(), bytes.size()) == 0;
}

Remark OnProfile(std::string_view path) {
  if (path.empty()) return {};
  try {
    const auto file = platform::OpenIfReadable(std::string(path));
    if (!file) return {std::string(kNoSuchFile)};
    return IsProfile(*file) ? Remark{} : Remark{std::string(kNoProfile)};
  } catch (const platform::UserError&) {
    return {std::string(kNoSuchFile)};
  }
}

}  // namespace

Remark RemarkOn(const PreferenceRow& row, std::string_view value) {
  if (value.size() >= settings::kTextLimit) return Refused(std::string(kTextTooLong));
  if (const auto* number = std::get_if<NumberField>(&row.field)) return OnNumber(*number, value);
  if (std::holds_alternative<CommandLineField>(row.field)) return OnCommandLine(value);
  if (std::holds_alternative<ProfileField>(row.field)) return OnProfile(value);
  return {};
}

}  // namespace ml::app
