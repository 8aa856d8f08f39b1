#pragma once

#include <string>
#include <string_view>

#include "metadata/format_strings/format_tokens.h"

/// Format strings are texts by users that hold tokens such as "@iso@".
namespace ml::metadata {

/// `format` with every token replaced by its value for the image. Bytes as the file had them; whatever is no token
/// stays as it is. Never throws for what the record holds.
std::string ExpandFormatString(std::string_view format, const FormatContext& context);

/// `format` with every token that has a label replaced by it: what the text will tell, for any image.
std::string DescribeFormatString(std::string_view format);

}  // namespace ml::metadata
