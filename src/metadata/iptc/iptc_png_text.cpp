#include "metadata/iptc/iptc_png_text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

#include "metadata/byte_writer.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/psd_resources.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

/// A number and the colon behind it, taken off the front.
std::optional<int> TakeNumber(std::string_view& text) {
  int number = 0;
  const auto* end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || behind == end || *behind != ':') return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(behind - text.data()) + 1);
  return number;
}

/// A line, taken off the front. The value may hold line ends of its own.
std::optional<IptcItem> TakeLine(std::string_view& text) {
  const auto record = TakeNumber(text);
  const auto dataset = record ? TakeNumber(text) : std::nullopt;
  const auto length = dataset ? TakeNumber(text) : std::nullopt;
  if (!length || *length < 0 || static_cast<std::size_t>(*length) > text.size()) return std::nullopt;
  IptcItem item{*record, *dataset, std::string(text.substr(0, static_cast<std::size_t>(*length)))};
  text.remove_prefix(item.value.size());
  if (text.starts_with('\n')) text.remove_prefix(1);
  return item;
}

bool IsListed(const IptcItem& item) {
  return item.record == kApplicationRecord && item.dataset > 0 && item.dataset <= 0xff && !item.value.empty();
}

}  // namespace

std::vector<IptcItem> ParseIptcText(std::string_view text) {
  std::vector<IptcItem> items;
  while (auto item = TakeLine(text)) {
    if (IsListed(*item)) items.push_back(std::move(*item));
  }
  return items;
}

std::string BuildIptcText(const std::vector<IptcItem>& items) {
  std::string text;
  for (const auto& item : items) {
    if (!IsListed(item) || item.value.size() >= kIptcEditLimit) continue;
    for (const auto number : {kApplicationRecord, item.dataset, static_cast<int>(item.value.size())}) {
      text += std::to_string(number) + ":";
    }
    text += item.value + "\n";
  }
  return text;
}

std::string BuildRawIptcText(const IptcBlock& block) {
  constexpr std::size_t kLine = 72, kSizeWidth = 8;
  const auto data = BuildIptcBlock(block, IptcCarrier::Resource);
  if (data.empty()) return {};
  ByteWriter resource(ByteOrder::Big);
  resource.Text("8BIM");
  resource.Short(psd_resource::kIptc);
  resource.Short(0);  // no name
  resource.Long(static_cast<std::uint32_t>(data.size()));
  resource.Bytes(data);
  const auto& bytes = resource.View();
  const auto digits = platform::AsciiLower(platform::ToHex(platform::AsText(bytes)));
  const auto size = std::to_string(bytes.size());
  auto text = "\niptc\n" + std::string(kSizeWidth - std::min(kSizeWidth, size.size()), ' ') + size + "\n";
  for (std::size_t at = 0; at < digits.size(); at += kLine) text += digits.substr(at, kLine) + "\n";
  return text;
}

}  // namespace ml::metadata
