#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ml::imagefiles {

/// A path for a file made of each of `images`: the name with `extension` for its own, in `directory` or, where that is
/// empty, beside the image. Where two of the images would share a file, all of these keep their whole name in front of
/// `extension`. Names that differ in case alone count as one.
std::vector<std::string> OutputNames(const std::vector<std::string>& images, const std::string& directory,
                                     std::string_view extension);

}  // namespace ml::imagefiles
