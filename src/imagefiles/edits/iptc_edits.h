#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "imagefiles/edits/image_edits.h"
#include "metadata/iptc/iptc_merge.h"
#include "platform/job_host.h"
#include "platform/locale_text.h"

/// Edited IPTC values on their way into images. In the values every text that holds an "@" is a format string, filled
/// in for each image.
namespace ml::imagefiles {

enum class WriteMode { Write, DryRun };

struct IptcEditTools {
  const EditTools& edit;
  const platform::LocaleText& locale;
  WriteMode mode = WriteMode::Write;
};

/// What one file came to.
struct IptcResult {
  std::string path;
  std::vector<metadata::IptcItem> items =
      {};                    ///< of the application record: as the file has them now, or would have them
  bool changed = false;      ///< false if the file had them already, and was not written
  std::string failure = {};  ///< names the file; empty if all went well
};

/// Gives the image these values in place of its own; what nobody can edit stays. Throws UserError naming the file,
/// which then is as it was.
IptcResult ApplyIptc(ImageFile& file, std::vector<metadata::IptcItem> values, const IptcEditTools& tools);

/// New values for many images.
struct IptcMergeJob {
  std::vector<std::string> paths = {};
  std::vector<metadata::IptcItem> values = {};
  metadata::IptcMergeRules rules = {};  ///< whose timestamp is not looked at
  bool exifTimestamp = true;            ///< "IptcExifTimestamp": date and time created become those of each shot
  int threads = 4;                      ///< files written at once, as most of the time is spent waiting for the disk
};

/// Merges the values into one image. Throws UserError naming the file.
IptcResult MergeIptcInto(ImageFile& file, const IptcMergeJob& job, const IptcEditTools& tools);

/// The same for the images of the job, with results in their order. The first failure ends it, but for the files that
/// are being written at that moment, and its sentence is shown to the host's user; so does a stop request, without a
/// sentence. What was written stays. To be run on a thread of its own; the recorder needs no lock.
std::vector<IptcResult> MergeIptcInto(const IptcMergeJob& job, const IptcEditTools& tools,
                                      const platform::JobHost& host, const std::stop_token& stop);

}  // namespace ml::imagefiles
