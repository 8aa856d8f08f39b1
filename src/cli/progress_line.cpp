#include "cli/progress_line.h"

#include <unistd.h>

#include <cstdio>
#include <string>

#include "platform/text.h"

namespace ml::cli {

ProgressLine::ProgressLine(int count) : count_(count), terminal_(::isatty(STDERR_FILENO) == 1) {}

ProgressLine::~ProgressLine() { Clear(); }

void ProgressLine::Next(std::string_view name) {
  ++done_;
  if (!terminal_) return;
  const auto shown = platform::ToDisplayUtf8(name);
  const auto text = "\r\033[K" + std::to_string(done_) + " of " + std::to_string(count_) + " " + shown;
  std::fwrite(text.data(), 1, text.size(), stderr);
}

void ProgressLine::Clear() {
  if (terminal_) std::fputs("\r\033[K", stderr);
}

}  // namespace ml::cli
