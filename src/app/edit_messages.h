#pragma once

#include <string>
#include <string_view>

#include "platform/interaction.h"

/// What the commands that write into images say.
namespace ml::app {

inline constexpr std::string_view kSelectToRotate = "Please select one or more files to rotate.",
                                  kSelectToAutoRotate = "Please select one or more JPEG images to rotate.";

/// Names of the commands, for the progress window and for undo.
inline constexpr std::string_view kRotateJob = "Rotate Image", kAutoRotateJob = "Auto Rotate JPEG Images",
                                  kCommentJob = "Edit Comments", kAdjustDateJob = "Adjust Image Date/Time",
                                  kEmbedJob = "Embed Color Profile", kThumbnailJob = "Regenerate JPEG Thumbnails",
                                  kIptcJob = "Edit IPTC Data";

inline constexpr std::string_view kDoNotAskAgain = "Do not ask this again";

inline platform::MessageBox RotateTiffQuestion(const std::string& path) {
  return {.text = "Rotate TIFF file:\n" + path +
                  "\n\nWARNING: The TIFF file will be rewritten as an uncompressed TIFF and\n"
                  "any extra information may be lost. EXIF information and IPTC data\n"
                  "will be preserved.\n\nDo you wish to proceed?",
          .icon = platform::BoxIcon::Warning,
          .buttons = platform::Buttons::OkCancel};
}

inline std::string ErrorRotating(const std::string& reason) { return "Error rotating image:\n" + reason; }

inline std::string ErrorAdjustingDate(const std::string& path, const std::string& reason) {
  return "Error adjusting image date/time\n" + path + "\n" + reason;
}

}  // namespace ml::app
