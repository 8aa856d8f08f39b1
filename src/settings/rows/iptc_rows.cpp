#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::iptc, Members...>;

constexpr SettingRow kRows[] = {
    {"IPTCcomments", In<&IptcSettings::comments>},
    {"IptcMergeKeywords", In<&IptcSettings::mergeKeywords>},
    {"IptcExifTimestamp", In<&IptcSettings::exifTimestamp>},
    {"IptcOnlyReplaceEmpty", In<&IptcSettings::onlyReplaceEmpty>},
    {"IptcLeaveExistingIfNewEmpty", In<&IptcSettings::leaveExistingIfNewEmpty>},
};

}  // namespace

std::span<const SettingRow> IptcRows() { return kRows; }

}  // namespace ml::settings
