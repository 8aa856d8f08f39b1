#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ml::batch {

/// The lines of a slide's caption, out of its format string with the tokens of the image filled in: `number` and
/// `count` tell its place in the show, a backslash and an n end a line. No line has white space at its ends; a caption
/// of nothing but white space has no lines.
std::vector<std::string> CaptionLines(std::string_view expanded, int number, int count);

/// How many of a caption's lines are shown on a screen, in whatever unit: a picture keeps at least half of it.
int LinesThatFit(std::size_t lines, int screenHeight, int lineHeight);

}  // namespace ml::batch
