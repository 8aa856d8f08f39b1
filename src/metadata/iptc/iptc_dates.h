#pragma once

#include <ctime>
#include <string>

/// Dates and times as IPTC data hold them, in local time.
namespace ml::metadata {

/// "20020324"
std::string IptcDate(std::time_t time);
/// "101112+0200", with the zone that was in force then.
std::string IptcTime(std::time_t time);

}  // namespace ml::metadata
