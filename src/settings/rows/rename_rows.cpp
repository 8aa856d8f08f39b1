#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::rename, Members...>;

constexpr SettingRow kRows[] = {
    {"RenameFirstNumber", In<&RenameSettings::firstNumber>},
    {"RenameFirstNumber1", In<&RenameSettings::firstNumber1>},
    {"RenameFirstNumber2", In<&RenameSettings::firstNumber2>},
    {"RenameFirstNumber3", In<&RenameSettings::firstNumber3>},
    {"RenameNumberOfDigits", In<&RenameSettings::digits>},
    {"RenameLowerCaseExt", In<&RenameSettings::lowerCaseExt>},
    {"RenameContinuousNumbering", In<&RenameSettings::continuousNumbering>},
    {"RenameFormatString", In<&RenameSettings::formatString>},
    {"RenameFormatString2", In<&RenameSettings::formatString2>},
    {"RenameFormatString3", In<&RenameSettings::formatString3>},
    {"RenameCustom1Name", In<&RenameSettings::custom1Name>},
    {"RenameCustom2Name", In<&RenameSettings::custom2Name>},
    {"RenameCustom3Name", In<&RenameSettings::custom3Name>},
    {"RenameSortMethod", In<&RenameSettings::sortMethod>, Stored::ReadWrite, OneTwoOrZero},
    {"RenameStyle", In<&RenameSettings::style>},
};

}  // namespace

std::span<const SettingRow> RenameRows() { return kRows; }

}  // namespace ml::settings
