#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What a user may enter. The tests give the sentence to refuse it with, or nothing; an empty text is always allowed.
namespace ml::metadata {

std::optional<std::string_view> CheckIptcCategory(std::string_view text);

/// The date without slashes and dashes, as it is tested and kept.
std::string CleanIptcDate(std::string_view text);
enum class IptcDateKind { Created, Release };
/// `text` is a clean date: year, month and day in eight digits, from 1900 to 2100.
std::optional<std::string_view> CheckIptcDate(std::string_view text, IptcDateKind kind);

}  // namespace ml::metadata
