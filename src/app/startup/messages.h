#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "platform/interaction.h"

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

}  // namespace ml::app
