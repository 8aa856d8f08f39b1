#include "metadata/iptc/iptc_date_choices.h"

#include "platform/dates.h"
#include "platform/file_identity.h"

namespace ml::metadata {
namespace {

using Source = IptcDateSource;

constexpr IptcDateChoice kCreated[] = {
    {"&EXIF Date/Time", Source::Exif}, {"&File Date/Time", Source::File},   {"&Now", Source::Days},
    {"&Yesterday", Source::Days, -1},  {"&Two days ago", Source::Days, -2}, {"&Select Date/Time...", Source::Select},
    {"&Clear", Source::Clear},
};
constexpr IptcDateChoice kRelease[] = {
    {"&Now", Source::Days},
    {"&Tomorrow", Source::Days, 1},
    {"&Two days time", Source::Days, 2},
    {"&One week from now", Source::Days, 7},
    {"&Two weeks from now", Source::Days, 14},
    {"&Select Date/Time...", Source::Select},
    {"&Clear", Source::Clear},
};

constexpr std::int64_t kNanoseconds = 1'000'000'000;

}  // namespace

std::span<const IptcDateChoice> IptcDateChoices(IptcDateKind kind) {
  if (kind == IptcDateKind::Created) return kCreated;
  return kRelease;
}

std::time_t DaysFrom(std::time_t time, int days) {
  auto fields = platform::LocalTime(time);
  fields.tm_mday += days;
  return platform::ToTime(fields).value_or(time);
}

std::time_t FileTimeOf(const ExifData& data) {
  const auto identity = platform::IdentityOf(data.path);
  return identity ? static_cast<std::time_t>(identity->modified / kNanoseconds) : 0;
}

std::time_t ShotTimeOf(const ExifData& data) {
  return data.dateRecorded ? static_cast<std::time_t>(data.shootingTime) : 0;
}

}  // namespace ml::metadata
