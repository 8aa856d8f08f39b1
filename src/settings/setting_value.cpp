#include "settings/setting_value.h"

#include <bit>

#include "platform/numbers.h"

namespace ml::settings {

namespace {

template <class... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

}  // namespace

std::optional<std::string> ReadText(const SettingsBackend& backend, const SettingName& name) {
  auto text = backend.Text(name);
  if (text && text->size() >= kTextLimit) return std::nullopt;
  return text;
}

void AssignInteger(const SettingRow& row, const SettingSlot& slot, int value) {
  if (row.admit != nullptr) value = row.admit(value);
  if (const auto* number = std::get_if<int*>(&slot)) {
    **number = value;
  } else {
    *std::get<std::uint8_t*>(slot) = static_cast<std::uint8_t>(static_cast<unsigned>(value) & 0xFFu);
  }
}

void ReadValue(const SettingsBackend& backend, const SettingRow& row, Settings& settings) {
  const SettingName name{row.key};
  const SettingSlot slot = row.slot(settings);
  const auto number = [&](auto*) {
    if (const auto stored = backend.Integer(name)) AssignInteger(row, slot, *stored);
  };
  const auto text = [&](std::string* value) {
    if (auto stored = ReadText(backend, name)) *value = std::move(*stored);
  };
  const auto decimal = [&](double* value) {
    if (const auto stored = ReadText(backend, name)) *value = platform::LeadingNumber(*stored);
  };
  const auto font = [&](platform::FontRecord* value) {
    if (const auto stored = ReadText(backend, name)) value->SetHex(*stored);
  };
  std::visit(Overloaded{number, text, decimal, font}, slot);
}

void WriteValue(SettingsBackend& backend, const SettingRow& row, Settings& settings) {
  const SettingName name{row.key};
  std::visit(Overloaded{[&](const auto* number) { backend.PutInteger(name, *number); },
                        [&](const std::string* text) { backend.PutText(name, *text); },
                        [&](const double* decimal) { backend.PutText(name, platform::ExactNumber(*decimal)); },
                        [&](const platform::FontRecord* font) { backend.PutText(name, font->Hex()); }},
             row.slot(settings));
}

bool SameValue(const SettingRow& row, Settings& a, Settings& b) {
  const SettingSlot other = row.slot(b);
  const auto plain = [&](auto* value) { return *value == *std::get<decltype(value)>(other); };
  const auto decimal = [&](double* value) {  // tells -0 from 0, and a number that is none is itself
    return std::bit_cast<std::uint64_t>(*value) == std::bit_cast<std::uint64_t>(*std::get<double*>(other));
  };
  return std::visit(Overloaded{plain, decimal}, row.slot(a));
}

}  // namespace ml::settings
