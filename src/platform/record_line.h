#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The lines in which the writing layer notes what must survive a crash. A line that was cut off or damaged
/// is recognised.
namespace ml::platform {

/// One line, with its end. Fields are any bytes.
std::string MakeRecordLine(const std::vector<std::string>& fields);
/// The fields of the lines of `text` up to the first one that is not whole.
std::vector<std::vector<std::string>> ReadRecordLines(std::string_view text);

/// A decimal number made with std::to_string; false if `text` is anything else.
bool ReadNumber(std::string_view text, std::uint64_t& value);
bool ReadNumber(std::string_view text, std::int64_t& value);

}  // namespace ml::platform
