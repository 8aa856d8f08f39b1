#pragma once

#include <string>

namespace ml::metadata {

/// One dataset of an IPTC block. File order is kept: it tells repeated datasets apart.
struct IptcItem {
  int record = 0;
  int dataset = 0;
  std::string value;  ///< bytes as stored
  bool operator==(const IptcItem&) const = default;
};

/// What a block holds beside the datasets that anybody edits, as bytes. A writer puts it back, because it tells other
/// programs how to read the rest, such as the encoding in 1:90.
struct IptcSurroundings {
  std::string otherRecords;  ///< the datasets of all records but the second, in front of it
  std::string tail;          ///< from the end of the list on, mostly an extended dataset, behind it
  bool operator==(const IptcSurroundings&) const = default;
};

}  // namespace ml::metadata
