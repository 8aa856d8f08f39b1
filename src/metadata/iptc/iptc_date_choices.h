#pragma once

#include <ctime>
#include <span>
#include <string_view>

#include "metadata/exif_data.h"
#include "metadata/iptc/iptc_validation.h"

/// What the user may fill a date with.
namespace ml::metadata {

enum class IptcDateSource {
  Exif,
  File,    ///< when the file last changed
  Days,    ///< from now
  Select,  ///< by the user
  Clear,
};

struct IptcDateChoice {
  std::string_view label;  ///< with "&" before the mnemonic
  IptcDateSource source = IptcDateSource::Days;
  int days = 0;
};
std::span<const IptcDateChoice> IptcDateChoices(IptcDateKind kind);

/// The same time of day, `days` later.
std::time_t DaysFrom(std::time_t time, int days);

/// The time of the shot; 0 if the image tells none but that of its file.
std::time_t ShotTimeOf(const ExifData& data);
/// When the file last changed; 0 if it is not there.
std::time_t FileTimeOf(const ExifData& data);

}  // namespace ml::metadata
