#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interaction.h"
#include "platform/linked_overwrite.h"

/// The boxes of start-up, all with only an OK button.
namespace ml::app {

inline platform::MessageBox UsageBox() {
  return {"Usage: marrowlantern [-a<#cpu>] [<file>|<directory>]\n   -a<#cpu>  CPU affinity preference (0 to 31)"};
}

inline platform::MessageBox ScriptNotFoundBox(std::string_view path) {
  return {"Script file not found:\n" + std::string(path)};
}

inline platform::MessageBox SkippingAffinityBox() { return {"Skipping SetProcessAffinityMask()"}; }

inline platform::MessageBox AffinityFailedBox(int cpu, long error, unsigned long processMask) {
  char text[320];
  std::snprintf(text, sizeof text,
                "Warning: Marrowlantern was unable to set the processor affinity to CPU%d.\n"
                "Please set the processor affinity to one CPU manually otherwise raw file\n"
                "conversion may fail.\n\nDebug info: error code: %ld, process mask: 0x%08lx",
                cpu, error, processMask);
  return {.text = text, .icon = platform::BoxIcon::Warning};
}

/// What became of the overwrites that a crash cut off; nothing if there was none.
inline std::optional<platform::MessageBox> RecoveryBox(const platform::OverwriteRecovery& recovery) {
  std::string text;
  const auto add = [&text](std::string_view heading, const std::vector<std::string>& lines) {
    if (lines.empty()) return;
    if (!text.empty()) text += "\n\n";
    text += heading;
    for (const auto& line : lines) text += "\n" + line;
  };
  add("A change that was cut off has been finished:", recovery.finished);
  add("A change that was cut off could not be finished, its result is kept as:", recovery.recovered);
  add("A change that was cut off is tried again at the next start:", recovery.failures);
  if (text.empty()) return std::nullopt;
  const bool wellDone = recovery.recovered.empty() && recovery.failures.empty();
  return platform::MessageBox{.text = text,
                              .icon = wellDone ? platform::BoxIcon::Information : platform::BoxIcon::Warning};
}

}  // namespace ml::app
