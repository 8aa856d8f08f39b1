#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/path_lines.h"
#include "platform/interaction.h"

/// What the commands that write into images say.
namespace ml::app {

inline constexpr std::string_view kSelectToRotate = "Please select one or more files to rotate.",
                                  kSelectToAutoRotate = "Please select one or more JPEG images to rotate.",
                                  kSelectJpegs = "Please select one or more JPEG images.",
                                  kSelectToRegenerate = "Please select one or more CRW images.";

inline constexpr std::string_view kViewingJpegJob = "Creating Canon EOS 1D/1Ds viewing JPEG";

inline constexpr std::string_view kDoNotAskAgain = "Do not ask this again";

inline platform::MessageBox RotateTiffQuestion(const std::string& path) {
  return {.text = "Rotate TIFF file:\n" + path +
                  "\n\nWARNING: The TIFF file will be rewritten as an uncompressed TIFF and\n"
                  "any extra information may be lost. EXIF information and IPTC data\n"
                  "will be preserved.\n\nDo you wish to proceed?",
          .icon = platform::BoxIcon::Warning,
          .buttons = platform::Buttons::OkCancel};
}

inline std::string ImageIsGone(const std::string& path) { return "The image is gone:\n" + path; }

inline platform::MessageBox ErrorRotating(const std::string& reason) {
  return {
      .text = "Error rotating image:\n" + reason, .caption = "Error rotating image", .icon = platform::BoxIcon::Error};
}

/// `reason`, with the path where it does not name the file itself.
inline std::string NamingTheFile(const std::string& reason, const std::string& path) {
  return reason.find(path) == std::string::npos ? reason + "\n" + path : reason;
}

inline std::string ErrorAdjustingDate(const std::string& path, const std::string& reason) {
  return "Error adjusting image date/time\n" + path + "\n" + reason;
}

inline std::string NoPlaceForProfile(const std::string& path) {
  return "There is no place for a color profile in:\n" + path;
}

inline std::string NoRoomForThumbnails(const std::vector<std::string>& paths) {
  return "There is no room for a new thumbnail, the old one stays in:" + PathLines(paths);
}

}  // namespace ml::app
