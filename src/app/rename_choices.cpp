#include "app/rename_choices.h"

#include <algorithm>

namespace ml::app {
namespace {

using batch::RenameSort;
using catalogue::CaseMode;
using settings::RenameSettings;

/// Where the settings keep one custom style.
struct CustomMembers {
  std::string RenameSettings::*name;
  std::string RenameSettings::*format;
  int RenameSettings::*firstNumber;
};
constexpr CustomMembers kCustom[] = {
    {&RenameSettings::custom1Name, &RenameSettings::formatString, &RenameSettings::firstNumber1},
    {&RenameSettings::custom2Name, &RenameSettings::formatString2, &RenameSettings::firstNumber2},
    {&RenameSettings::custom3Name, &RenameSettings::formatString3, &RenameSettings::firstNumber3},
};
static_assert(std::size(kCustom) == batch::kCustomStyles);

template <class Enum>
Enum Within(int value, Enum last) {
  return value < 0 || value > static_cast<int>(last) ? Enum{} : static_cast<Enum>(value);
}

}  // namespace

batch::ui::RenameChoices RenameChoicesOf(const RenameSettings& settings) {
  batch::ui::RenameChoices choices{.row = settings.style,
                                   .sort = Within(settings.sortMethod, RenameSort::AsGiven),
                                   .digits = settings.digits,
                                   .caseMode = Within(settings.lowerCaseExt, CaseMode::Upper),
                                   .continuous = settings.continuousNumbering != 0,
                                   .firstNumber = settings.firstNumber,
                                   .custom = {}};
  for (std::size_t i = 0; i < choices.custom.size(); ++i) {
    const auto& members = kCustom[i];
    choices.custom[i] = {settings.*members.name, settings.*members.format, settings.*members.firstNumber};
  }
  return choices;
}

void TakeRenameChoices(const batch::ui::RenameChoices& choices, RenameSettings& settings) {
  settings.style = choices.row;
  settings.sortMethod = static_cast<int>(choices.sort);
  settings.digits = choices.digits;
  settings.lowerCaseExt = static_cast<int>(choices.caseMode);
  settings.continuousNumbering = choices.continuous ? 1 : 0;
  settings.firstNumber = choices.firstNumber;
  for (std::size_t i = 0; i < choices.custom.size(); ++i) {
    const auto& members = kCustom[i];
    settings.*members.name = choices.custom[i].name;
    settings.*members.format = choices.custom[i].format;
    settings.*members.firstNumber = choices.custom[i].firstNumber;
  }
}

}  // namespace ml::app
