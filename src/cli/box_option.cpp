#include "cli/box_option.h"

#include <CLI/CLI.hpp>
#include <charconv>

namespace ml::cli {

void AddBoxOption(CLI::App& command, std::string& text) {
  command.add_option("--box", text, "WIDTHxHEIGHT in pixels")->required();
}

imagefiles::DisplayLimits ParseBox(const std::string& text) {
  imagefiles::DisplayLimits limits;
  const char* end = text.data() + text.size();
  const auto width = std::from_chars(text.data(), end, limits.maxWidth);
  const bool cross = width.ec == std::errc() && width.ptr != end && *width.ptr == 'x';
  const auto height = cross ? std::from_chars(width.ptr + 1, end, limits.maxHeight) : width;
  if (!cross || height.ec != std::errc() || height.ptr != end || limits.maxWidth < 1 || limits.maxHeight < 1) {
    throw CLI::ValidationError("--box", "takes WIDTHxHEIGHT in pixels, for example 1024x768");
  }
  return limits;
}

}  // namespace ml::cli
