#include "metadata/xmp_attributes.h"

#include <algorithm>

namespace ml::metadata {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

void SkipBlanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size())); }

}  // namespace

bool TakeAttribute(std::string_view& tag, XmpAttribute& attribute) {
  SkipBlanks(tag);
  attribute.name = tag.substr(0, tag.find_first_of("= \t\r\n/>"));
  tag.remove_prefix(attribute.name.size());
  SkipBlanks(tag);
  if (attribute.name.empty() || !tag.starts_with('=')) return false;
  tag.remove_prefix(1);
  SkipBlanks(tag);
  if (!tag.starts_with('"') && !tag.starts_with('\'')) return false;
  const auto end = tag.find(tag.front(), 1);
  if (end == std::string_view::npos) return false;
  attribute.value = tag.substr(1, end - 1);
  tag.remove_prefix(end + 1);
  return true;
}

}  // namespace ml::metadata
