#pragma once

#include <string>
#include <vector>

#include "metadata/iptc/iptc_merge.h"
#include "metadata/iptc/iptc_sheet_values.h"

namespace ml::metadata {

/// The sheet's values for many images.
struct IptcBatch {
  std::vector<std::string> paths;
  IptcSheetValues values;
  IptcMergeRules rules{};     ///< without a timestamp
  bool exifTimestamp = true;  ///< "IptcExifTimestamp": date and time created are those of each shot
};

struct IptcBatchReport {
  int written = 0, unchanged = 0;
  int missed = 0;  ///< the one that failed and those that were not reached
};

}  // namespace ml::metadata
