#include "metadata/iptc/iptc_validation.h"

#include <algorithm>

#include "metadata/messages.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kLongestCategory = 3;
constexpr std::size_t kDateSize = 8;

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsBetween(std::string_view digits, int least, int most) {
  const auto number = platform::LeadingInteger(digits);
  return number >= least && number <= most;
}

bool IsDate(std::string_view text) {
  return text.size() == kDateSize && std::ranges::all_of(text, IsDigit) && IsBetween(text.substr(0, 4), 1900, 2100) &&
         IsBetween(text.substr(4, 2), 1, 12) && IsBetween(text.substr(6, 2), 1, 31);
}

}  // namespace

std::optional<std::string_view> CheckIptcCategory(std::string_view text) {
  if (platform::CodePointCount(text) > kLongestCategory) return messages::kIptcCategoryTooLong;
  if (!std::ranges::all_of(text, IsLetter)) return messages::kIptcCategoryLetters;
  return std::nullopt;
}

std::string CleanIptcDate(std::string_view text) {
  return platform::ReplaceAll(platform::ReplaceAll(text, "/", ""), "-", "");
}

std::optional<std::string_view> CheckIptcDate(std::string_view text, IptcDateKind kind) {
  if (text.empty() || IsDate(text)) return std::nullopt;
  return kind == IptcDateKind::Created ? messages::kIptcDate : messages::kIptcReleaseDate;
}

}  // namespace ml::metadata
