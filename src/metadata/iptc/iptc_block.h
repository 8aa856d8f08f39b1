#pragma once

#include <cstddef>
#include <vector>

#include "metadata/byte_view.h"
#include "metadata/iptc_item.h"

/// A block of IPTC data, a run of datasets, as it stands in all kinds of files.
namespace ml::metadata {

/// In what a block stands; carriers differ in a few rules.
enum class IptcCarrier {
  Bare,      ///< a tag of TIFF files, a box of JPEG 2000: values that begin with a control character are no texts
  Resource,  ///< an image resource of JPEG and PSD files, which keeps them
};

struct IptcBlock {
  std::vector<IptcItem> items{};  ///< of all records, in file order; without the version and without empty values
  IptcSurroundings surroundings{};
};

/// Never fails: what is no dataset is passed over, and a value that the end cuts off is taken as far as it is there.
/// An extended dataset, whose value may be of any length, ends the list, as do 65,536 items.
IptcBlock ParseIptcBlock(ByteView bytes, IptcCarrier carrier);

/// The surroundings, the version and the items of the application record; empty if there are neither. Filled up with
/// zeros to a multiple of four in a bare block, which may be counted in longs, and to an even size in a resource. An
/// item whose value is longer than a plain dataset can be, 16,383 bytes, is left out.
std::vector<std::byte> BuildIptcBlock(const IptcBlock& block, IptcCarrier carrier);

}  // namespace ml::metadata
