#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "metadata/exif_data.h"
#include "metadata/iptc/iptc_merge.h"
#include "metadata/iptc/iptc_sheet_values.h"
#include "platform/locale_text.h"
#include "platform/progress.h"

/// Edited values on their way into images.
namespace ml::metadata {

/// Puts the list into the file of an image, in place of the one that `image` was read with; what `image` holds around
/// it goes back as it is. Throws UserError.
using IptcWriter = std::function<void(const ExifData& image, const std::vector<IptcItem>& items)>;

/// What both ways need; must outlive the call.
struct IptcApplyHost {
  const ExifOptions& options;
  const platform::LocaleText& locale;
  const IptcWriter& write;
};

enum class IptcApplied { Written, Unchanged };

/// Gives the image the values in place of its own, tokens in them filled in. A file whose data would stay the same is
/// not written. Throws UserError.
IptcApplied ApplyIptc(const std::string& path, const IptcSheetValues& values, const IptcApplyHost& host);

/// Values for many images.
struct IptcBatch {
  std::vector<std::string> paths;
  IptcSheetValues values;
  IptcMergeRules rules{};     ///< without a timestamp
  bool exifTimestamp = true;  ///< "IptcExifTimestamp": date and time created are those of each shot
};
struct IptcBatchReport {
  int written = 0, unchanged = 0;
};

/// Merges the values into one image after the other, tokens in them filled in for each. Ends at the first failure, with
/// a UserError that names the file; Cancelled if asked to stop. What was written until then stays.
IptcBatchReport ApplyIptcToMany(const IptcBatch& batch, const IptcApplyHost& host, platform::Progress& progress,
                                const std::stop_token& stop);

}  // namespace ml::metadata
