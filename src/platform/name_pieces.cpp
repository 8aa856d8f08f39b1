#include "platform/name_pieces.h"

#include <algorithm>
#include <cstdint>

#include "platform/numbers.h"
#include "platform/text.h"

namespace ml::platform {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kPieceStart = "%[", kPieceEnd = "]";

std::string_view Characters(std::string_view name, std::int64_t first, std::int64_t last) {
  const auto length = static_cast<std::int64_t>(CodePointCount(name));
  if (first < 1 || first > length || last < first) return {};
  name.remove_prefix(FirstCodePoints(name, static_cast<std::size_t>(first - 1)).size());
  return FirstCodePoints(name, static_cast<std::size_t>(last - first + 1));
}

}  // namespace

std::string_view FirstDigits(std::string_view name) {
  name.remove_prefix(std::min(name.find_first_of(kDigits), name.size()));
  return name.substr(0, name.find_first_not_of(kDigits));
}

std::string_view LastDigits(std::string_view name, FirstCharacter first) {
  name = name.substr(0, name.find_last_of(kDigits) + 1);
  if (first == FirstCharacter::NeverCounts && !name.empty()) name.remove_prefix(1);
  return name.substr(name.find_last_not_of(kDigits) + 1);
}

std::string_view NamePiece(std::string_view name, std::string_view range) {
  const auto length = static_cast<std::int64_t>(CodePointCount(name));
  const auto dash = range.find('-');
  if (dash == std::string_view::npos) {
    const auto only = LeadingInteger(range);
    return Characters(name, only, only);
  }
  const auto behind = range.substr(dash + 1);
  if (dash == 0) return Characters(name, std::max<std::int64_t>(1, length - LeadingInteger(behind) + 1), length);
  return Characters(name, LeadingInteger(range.substr(0, dash)), behind.empty() ? length : LeadingInteger(behind));
}

std::string ReplaceNamePieces(std::string text, std::string_view style, std::string_view name) {
  for (auto start = style.find(kPieceStart); start != std::string_view::npos; start = style.find(kPieceStart, start)) {
    const auto end = style.find(kPieceEnd, start);
    if (end == std::string_view::npos) break;
    const auto from = start + kPieceStart.size();
    const auto token = style.substr(start, end + kPieceEnd.size() - start);
    text = ReplaceAll(text, token, NamePiece(name, style.substr(from, end - from)));
    start = end;
  }
  return text;
}

}  // namespace ml::platform
