#pragma once

#include <string_view>

namespace ml::metadata {

struct XmpAttribute {
  std::string_view name, value;  ///< as written
};
/// Takes the next attribute off the front of what follows a tag's name. Quotes may be double or single. False at the
/// tag's end, and where no attribute with a quoted value follows.
bool TakeAttribute(std::string_view& tag, XmpAttribute& attribute);

}  // namespace ml::metadata
