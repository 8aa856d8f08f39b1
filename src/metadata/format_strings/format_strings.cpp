#include "metadata/format_strings/format_strings.h"

#include "platform/ordered_replacements.h"

namespace ml::metadata {

std::string ExpandFormatString(std::string_view format, const FormatContext& context) {
  return platform::ReplaceInOrder(format, FormatTokens(), [&](const FormatToken& row) { return row.value(context); });
}

std::string DescribeFormatString(std::string_view format) {
  return platform::ReplaceInOrder(format, FormatTokens(),
                                  [](const FormatToken& row) { return row.label.empty() ? row.token : row.label; });
}

}  // namespace ml::metadata
