#pragma once

#include <string>
#include <string_view>

#include "platform/interaction.h"

/// The sentences of the window.
namespace ml::app {

inline constexpr std::string_view kUsage =
    "Usage: marrowlantern [-a<#cpu>] [<file>|<directory>]\n   -a<#cpu>  CPU affinity preference (0 to 31)";
inline constexpr std::string_view kAffinitySkipped = "Skipping SetProcessAffinityMask()";

inline platform::MessageBox ScriptNotFound(const std::string& path) {
  return {.text = "Script file not found:\n" + path, .icon = platform::BoxIcon::Warning};
}
inline std::string NoSuchImage(const std::string& path) { return "No such image: " + path; }

inline constexpr std::string_view kOrderFileFilter =
    "Custom Sort Order files (*.xml)|*.xml|Dat files (*.dat)|*.dat|All files (*.*)|*.*||";
inline constexpr std::string_view kTagFileFilter =
    "Tag files (*.tag)|*.tag|Text files (*.txt)|*.txt|All files (*.*)|*.*||";
inline constexpr std::string_view kIgnoreExtensions = "Ignore file extensions when applying tags";

inline constexpr std::string_view kNoDirectoryYet = "Open a directory, or drop one here";

}  // namespace ml::app
