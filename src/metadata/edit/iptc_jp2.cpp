#include "metadata/edit/iptc_jp2.h"

#include <limits>
#include <string_view>

#include "metadata/byte_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/jp2_boxes.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::uint64_t kLongestShort = std::numeric_limits<std::uint32_t>::max();

/// Nothing for an empty block.
std::vector<std::byte> BuildBox(const IptcBlock& block) {
  constexpr std::size_t framing = 8 + std::tuple_size_v<Jp2Uuid>;
  const auto data = BuildIptcBlock(block, IptcCarrier::Bare);
  if (data.empty()) return {};
  if (data.size() > kLongestShort - framing) throw platform::UserError(messages::kIptcTooLong);
  ByteWriter out(ByteOrder::Big);
  out.Long(static_cast<std::uint32_t>(data.size() + framing));
  out.Text("uuid");
  for (const auto byte : kIptcUuid) out.Byte(byte);
  out.Bytes(data);
  return out.Take();
}

/// The box whose data hold `inner`; null if there is none.
const Jp2Box* BoxAround(const Jp2File& jp2, const FileRange& inner) {
  for (const auto& box : jp2.boxes) {
    if (box.data.position <= inner.position && inner.End() <= box.data.End()) return &box;
  }
  return nullptr;
}

/// What the length field of a box says; 0 is "to the end".
std::uint64_t DeclaredSize(const ByteSource& file, const Jp2Box& box) {
  const std::uint64_t size = file.ReadNumber(box.box.position, 4, ByteOrder::Big);
  if (size != 1) return size;
  return std::uint64_t{file.ReadNumber(box.box.position + 8, 4, ByteOrder::Big)} << 32 |
         file.ReadNumber(box.box.position + 12, 4, ByteOrder::Big);
}

void Add(EditedFile& file, const Jp2Box& last, const std::vector<std::byte>& box) {
  if (!last.openEnd) return file.Insert(last.box.End(), box);
  // A length in 64 bits would need room that the box has not.
  if (last.box.size > kLongestShort) return file.Insert(last.box.position, box);
  ByteWriter length(ByteOrder::Big);
  length.Long(static_cast<std::uint32_t>(last.box.size));
  file.Overwrite(last.box.position, length.View());
  file.Insert(last.box.End(), box);
}

}  // namespace

void WriteJp2Iptc(EditedFile& file, const IptcBlock& block) {
  Jp2ImageData(file);
  const auto jp2 = ReadJp2File(file);
  const auto& last = jp2->boxes.back();
  if (!last.openEnd && DeclaredSize(file, last) != last.box.size) {
    throw platform::UserError(messages::kDamagedForEdit);
  }
  const auto box = BuildBox(block);
  const auto data = jp2->FindUuid(file, kIptcUuid);
  if (data) return file.Replace(BoxAround(*jp2, *data)->box, box);
  if (!box.empty()) Add(file, last, box);
}

}  // namespace ml::metadata
