#pragma once

#include <string>
#include <string_view>

/// Parts of a file's name (without directory and extension) that texts about it are made of. Characters are counted as
/// a user counts them.
namespace ml::platform {

/// The first run of digits; empty if there is none.
std::string_view FirstDigits(std::string_view name);

/// Whether a run of digits may begin with the name itself.
enum class FirstCharacter { Counts, NeverCounts };
/// The last run of digits; empty if there is none.
std::string_view LastDigits(std::string_view name, FirstCharacter first);

/// The characters that `range` names, the first being 1: "2-4", "2-" to the end, "-3" the last three, "2" that one.
/// What lies behind the end is left out; a range that begins outside the name, runs backwards or is no number is empty.
std::string_view NamePiece(std::string_view name, std::string_view range);

/// Replaces in `text` each "%[range]" that stands in `style` by that piece of `name`. A "%[" without an end stays.
std::string ReplaceNamePieces(std::string text, std::string_view style, std::string_view name);

}  // namespace ml::platform
