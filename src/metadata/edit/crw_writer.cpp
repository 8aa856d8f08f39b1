#include "metadata/edit/crw_writer.h"

#include <algorithm>
#include <limits>
#include <string>

#include "metadata/byte_writer.h"
#include "metadata/ciff.h"
#include "metadata/crw_file.h"
#include "metadata/messages.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

void OverwriteLong(EditedFile& file, std::uint64_t position, ByteOrder order, std::uint32_t value) {
  ByteWriter out(order);
  out.Long(value);
  file.Overwrite(position, out.View());
}

}  // namespace

bool TurnCrw(EditedFile& file, int degrees) {
  constexpr int circle = 360;
  const auto basics = ReadCrwBasics(file);
  if (!basics.rotation) return false;
  const int turned = (*basics.rotation % circle + degrees % circle + 2 * circle) % circle;
  OverwriteLong(file, basics.rotationPosition, basics.order, static_cast<std::uint32_t>(turned));
  return true;
}

bool AdjustCrwTime(EditedFile& file, std::int64_t seconds) {
  const auto basics = ReadCrwBasics(file);
  if (!basics.time) return false;
  const auto sum = basics.time->seconds + seconds;
  if (sum < 0 || sum > std::numeric_limits<std::uint32_t>::max()) throw platform::UserError(messages::kCrwTimeRange);
  OverwriteLong(file, basics.time->position, basics.order, static_cast<std::uint32_t>(sum));
  return true;
}

bool WriteCrwComment(EditedFile& file, std::string_view text) {
  constexpr std::string_view encoding = "ASCII";
  const auto records = ReadCiffRecords(file);
  const auto record = std::ranges::find_if(records, [](const CiffRecord& candidate) {
    return candidate.tag == ciff_tag::kDescription && candidate.heap == ciff_tag::kImageProperties;
  });
  if (record == records.end() || record->size <= encoding.size() || text.size() >= kCrwCommentLimit) return false;
  if (record->position > file.Size() || record->size > file.Size() - record->position) return false;
  std::string field(encoding);
  field += platform::CutToBytes(text, record->size - encoding.size());
  field.resize(record->size, ' ');
  file.Overwrite(record->position, platform::AsBytes(field));
  return true;
}

}  // namespace ml::metadata
