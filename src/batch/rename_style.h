#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "catalogue/rename_files.h"

namespace ml::batch {

/// Who gets which number. The values are those of the setting "RenameSortMethod"; AsGiven is never stored.
enum class RenameSort { Number = 0, Name = 1, Time = 2, AsGiven = 3 };

inline constexpr std::size_t kMostDigits = 7;
/// Running numbers begin again behind it.
inline constexpr std::int64_t kLastNumber = 9'999'999;

/// How the new names of a batch are made.
struct RenameStyle {
  std::string format = "%f_%n";  ///< text with tokens, see GetNewName
  std::size_t digits = 4;        ///< least digits of running numbers, 1..kMostDigits
  std::int64_t firstNumber = 1;  ///< at least 0
  RenameSort sort = RenameSort::Number;
  catalogue::CaseMode caseMode = catalogue::CaseMode::Unchanged;
};

/// A style that the program brings along; rows 0 to 6 of the list of styles.
struct StyleRow {
  std::string_view name, format;
  std::optional<std::size_t> digits;  ///< nothing: they stay as they are
};

/// The rows 0 to 6. The rows 7, 8 and 9 are the user's own: their names and formats are in the settings.
std::span<const StyleRow> BuiltInStyles();
inline constexpr std::size_t kCustomStyles = 3;

/// Whether the style asks for a running number: only then has the first number a meaning.
bool UsesNumber(std::string_view format);
/// Whether the digits have a meaning.
bool UsesDigits(std::string_view format);

}  // namespace ml::batch
