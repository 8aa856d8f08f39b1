#pragma once

namespace ml::settings {

/// How IPTC texts are merged and kept.
struct IptcSettings {
  int comments = 1;
  int mergeKeywords = 1;
  int exifTimestamp = 1;
  int onlyReplaceEmpty = 1;
  int leaveExistingIfNewEmpty = 1;
};

}  // namespace ml::settings
