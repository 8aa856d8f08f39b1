#pragma once

#include <string>

namespace ml::metadata {

/// One dataset of an IPTC block. File order is kept: it tells repeated datasets apart.
struct IptcItem {
  int record = 0;
  int dataset = 0;
  std::string value;  ///< bytes as stored
};

}  // namespace ml::metadata
