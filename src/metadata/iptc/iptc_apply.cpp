#include "metadata/iptc/iptc_apply.h"

#include <algorithm>

#include "metadata/format_strings/format_strings.h"
#include "metadata/iptc/iptc_compare.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_date_choices.h"
#include "metadata/iptc/iptc_limits.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

using Items = std::vector<IptcItem>;

/// What a writer looks at; other records are written back with the surroundings.
Items Edited(Items items) {
  std::erase_if(items, [](const auto& item) { return item.record != kApplicationRecord || item.value.empty(); });
  return items;
}

/// A value that its tokens make longer than what can be edited is cut: nobody could change it any more.
IptcSheetValues Expanded(IptcSheetValues values, ExifData& image, const IptcApplyHost& host) {
  for (auto& [dataset, texts] : values) {
    for (auto& text : texts) {
      if (text.find('@') == std::string::npos) continue;
      const auto whole = ExpandFormatString(text, {image, host.options, host.locale});
      text = platform::CutToBytes(whole, kIptcEditLimit - 1);
    }
    std::erase(texts, "");
  }
  return values;
}

IptcApplied Write(const ExifData& image, const Items& items, const IptcApplyHost& host) {
  if (IsSameIptc(Edited(image.iptc), Edited(items))) return IptcApplied::Unchanged;
  host.write(image, items);
  return IptcApplied::Written;
}

IptcApplied MergeInto(const std::string& path, const IptcBatch& batch, const IptcApplyHost& host) {
  ExifData image(path, host.options);
  auto rules = batch.rules;
  rules.timestamp = batch.exifTimestamp ? ShotTimeOf(image) : 0;
  return Write(image, MergeIptc(image.iptc, ItemsOf(Expanded(batch.values, image, host), {}), rules), host);
}

std::string Naming(const std::string& path, const std::string& sentence) {
  return sentence.find(path) == std::string::npos ? sentence + "\n" + path : sentence;
}

}  // namespace

IptcApplied ApplyIptc(const std::string& path, const IptcSheetValues& values, const IptcApplyHost& host) {
  ExifData image(path, host.options);
  return Write(image, ItemsOf(Expanded(values, image, host), image.iptc), host);
}

IptcBatchReport ApplyIptcToMany(const IptcBatch& batch, const IptcApplyHost& host, platform::Progress& progress,
                                const std::stop_token& stop) {
  IptcBatchReport report;
  const auto count = static_cast<int>(batch.paths.size());
  for (int i = 0; i < count; ++i) {
    if (stop.stop_requested()) throw platform::Cancelled();
    const auto& path = batch.paths[static_cast<std::size_t>(i)];
    progress.position(i + 1, count);
    progress.text(path);
    try {
      MergeInto(path, batch, host) == IptcApplied::Written ? ++report.written : ++report.unchanged;
    } catch (const platform::UserError& error) {
      throw platform::UserError(Naming(path, error.what()));
    }
  }
  return report;
}

}  // namespace ml::metadata
