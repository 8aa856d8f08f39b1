#pragma once

#include <string>

namespace ml::cli {

/// An image as the user named it, and where it lies.
struct GivenImage {
  std::string given, path;
};

/// Why it is no file of a format that is known, with its name; empty if it is one.
std::string WhyNoImage(const GivenImage& image);

/// Throws UserError with that reason.
void RequireImage(const GivenImage& image);

}  // namespace ml::cli
