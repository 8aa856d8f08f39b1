#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ml::platform::ui {

/// The local paths of a text of type text/uri-list, in its order. Names keep their bytes, also those that are
/// no UTF-8; comments, other schemes and other machines are left out, as are escapes of NUL.
std::vector<std::string> LocalPathsOfUriList(std::string_view text);
/// The text of that type for full paths, whatever bytes they hold.
std::string UriListOf(std::span<const std::string> paths);

}  // namespace ml::platform::ui
