#pragma once

#include <optional>
#include <string>
#include <vector>

#include "imagefiles/edits/image_edits.h"
#include "imagefiles/tools/tool_run.h"
#include "platform/interaction.h"

/// The JPEGs that cameras put into their raw files, as files of their own.
namespace ml::imagefiles {

/// Whether `path` is a raw file, of any kind, by its name and, for a TIFF, by what it holds.
bool MayHoldJpeg(const std::string& path);

struct ExtractSettings {
  std::string directory{};    ///< exists
  bool exif = true;           ///< "ExtractJpegExif": give each JPEG the shooting data
  bool rotate = true;         ///< "ExtractJpegRotate": turn it upright, without loss
  bool timestamp = true;      ///< "ExtractJpegTimestamp": its file time is the shooting date
  bool viewingJpegs = false;  ///< "ExtractJpegCopyViewingJpegs": copy those of EOS-1D raw files
  bool overwrite = false;     ///< replace files that exist, which else are skipped
};

/// The directory that the JPEGs of `image` go to unless the user names another one.
std::string DefaultExtractDirectory(const std::string& image);

/// Makes `directory` if it is missing and the user wants it; false if not. Throws UserError for a file and if it
/// cannot be made.
bool EnsureExtractDirectory(const std::string& directory, platform::Interaction& ask);

/// Where the JPEG of each of `images` goes: the image's name with ".jpg" for its extension, or behind the whole name
/// where two of the images would share a file. Full paths.
std::vector<std::string> ExtractedNames(const std::vector<std::string>& images, const std::string& directory);

/// The JPEG of one image, put at `output` in one step. Files that are no raw files, EOS-1D raw files without a viewing
/// JPEG or where those are not wanted, and existing outputs that are not to be overwritten, are skipped with a note. A
/// raw file with no JPEG in it is a failure that others need not wait for: it is noted, not thrown. Throws UserError.
ToolItem ExtractJpeg(const std::string& image, const std::string& output, const ExtractSettings& settings,
                     const EditTools& tools);

/// ExtractJpeg() for all images.
ToolReport ExtractJpegs(const std::vector<std::string>& images, const ExtractSettings& settings, const EditTools& tools,
                        const ToolRun& run);

}  // namespace ml::imagefiles
