#include "batch/ui/token_help.h"

namespace ml::batch::ui {
namespace {

using platform::ui::TokenEntry;

constexpr TokenEntry kNumbers[] = {
    {"%n", "Running number"},
    {"%u", "Number that makes the name unique"},
    {"%U", "Number only where a name would stand twice"},
    {"%N", "Camera's file number, seven digits"},
    {"%q", "Camera's folder number"},
    {"%r", "Camera's number in the folder"},
    {"%e", "Number in a burst"},
};
constexpr TokenEntry kNames[] = {
    {"%o", "Old name"},
    {"%[2-4]", "Characters 2 to 4 of the old name"},
    {"%[5-]", "Old name from character 5 on"},
    {"%[-4]", "Last 4 characters of the old name"},
    {"%[1]", "Character 1 of the old name"},
    {"%x", "Extension"},
    {"%f", "Kind of file"},
};
constexpr TokenEntry kDates[] = {
    {"%d", "Date"},
    {"%Y", "Year"},
    {"%y", "Year, two digits"},
    {"%m", "Month"},
    {"%b", "Name of the month"},
    {"%D", "Day"},
    {"%a", "Day of the week"},
    {"%W", "Week of the year"},
};
constexpr TokenEntry kTimes[] = {
    {"%t", "Time"}, {"%H", "Hour"}, {"%I", "Hour, of twelve"}, {"%M", "Minute"}, {"%S", "Second"},
};
constexpr TokenEntry kExposure[] = {
    {"%F", "Focal length"},
    {"%A", "Aperture"},
    {"%s", "Shutter speed, without \"1/\""},
    {"%i", "ISO"},
};
constexpr TokenEntry kCamera[] = {
    {"%T", "Camera model"},
    {"%v", "Model number"},
    {"%c", "Body number"},
    {"%C", "Body number, last three hexadecimal digits"},
};
constexpr TokenHelpGroup kGroups[] = {
    {"&Number", kNumbers}, {"&Old Name and Kind", kNames}, {"&Date", kDates},
    {"&Time", kTimes},     {"&Exposure", kExposure},       {"&Camera", kCamera},
};

}  // namespace

std::span<const TokenHelpGroup> TokenHelpGroups() { return kGroups; }

}  // namespace ml::batch::ui
