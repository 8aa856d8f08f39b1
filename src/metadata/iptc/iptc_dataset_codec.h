#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "metadata/byte_view.h"

namespace ml::metadata {

/// The first bytes of a dataset in a block or a file of IPTC data.
struct IptcDatasetHead {
  std::size_t offset = 0;  ///< of its mark
  std::size_t value = 0;   ///< offset of the value
  int record = 0;
  int dataset = 0;
  std::uint16_t length = 0;  ///< as it says
};
/// The next dataset at `offset` or behind, whatever stands before it; nothing if none begins there.
std::optional<IptcDatasetHead> NextIptcDataset(ByteView bytes, std::size_t offset);

/// The value as far as the bytes hold it.
std::string_view IptcValue(ByteView bytes, const IptcDatasetHead& head);

/// Appends a dataset. The value has at most 65,535 bytes.
void AppendIptcDataset(std::string& out, int record, int dataset, std::string_view value);
/// Appends the dataset that every block begins with.
void AppendIptcVersion(std::string& out);

}  // namespace ml::metadata
