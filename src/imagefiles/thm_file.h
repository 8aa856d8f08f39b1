#pragma once

#include <string>

namespace ml::imagefiles {

/// The ".thm" beside the image `path`, in any spelling; empty if there is none. Does not ask whether the format of
/// the image has such companions.
std::string FindThm(const std::string& path);

}  // namespace ml::imagefiles
