#include "metadata/iptc/iptc_dates.h"

#include <array>

#include "platform/dates.h"

namespace ml::metadata {
namespace {

std::string Format(const char* format, const std::tm& fields) {
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), format, &fields)};
}

}  // namespace

std::string IptcDate(std::time_t time) { return Format("%Y%m%d", platform::LocalTime(time)); }

std::string IptcTime(std::time_t time) {
  const auto fields = platform::LocalTime(time);
  const auto zone = Format("%z", fields);
  return Format("%H%M%S", fields) + (zone.empty() ? "+0000" : zone);
}

}  // namespace ml::metadata
