#include "metadata/iptc/iptc_dataset_codec.h"

#include <algorithm>

#include "metadata/iptc/iptc_datasets.h"

namespace ml::metadata {
namespace {

constexpr char kMark = '\x1c';
constexpr std::size_t kHeadSize = 5;
constexpr std::string_view kVersion("\0\2", 2);

}  // namespace

std::optional<IptcDatasetHead> NextIptcDataset(ByteView bytes, std::size_t offset) {
  const auto mark = bytes.Text().find(kMark, offset);
  if (mark == std::string_view::npos || bytes.Size() - mark < kHeadSize) return std::nullopt;
  const auto head = bytes.Sub(mark, kHeadSize).WithOrder(ByteOrder::Big);
  return IptcDatasetHead{mark, mark + kHeadSize, head.readByte(1), head.readByte(2), head.readShort(3)};
}

std::string_view IptcValue(ByteView bytes, const IptcDatasetHead& head) {
  return bytes.Text(head.value, std::min<std::size_t>(head.length, bytes.Size() - head.value));
}

void AppendIptcDataset(std::string& out, int record, int dataset, std::string_view value) {
  out += kMark;
  out += static_cast<char>(record);
  out += static_cast<char>(dataset);
  out += static_cast<char>(value.size() >> 8);
  out += static_cast<char>(value.size() & 0xff);
  out += value;
}

void AppendIptcVersion(std::string& out) {
  AppendIptcDataset(out, kApplicationRecord, iptc_dataset::kVersion, kVersion);
}

}  // namespace ml::metadata
