#include "batch/rename_style.h"

namespace ml::batch {
namespace {

constexpr StyleRow kStyles[] = {
    {"Standard", "%f_%n", 4},
    {"Enhanced", "%f%n", 5},
    {"Numbered", "%n_%f", 4},
    {"Date", "%d_%u", 3},
    {"Date + Type", "%d_%u_%f", 3},
    {"Date/Time", "%d_%t_%u", 1},
    {"ZoomBrowser-style", "%q-%r_%f", std::nullopt},
};

}  // namespace

std::span<const StyleRow> BuiltInStyles() { return kStyles; }

bool UsesNumber(std::string_view format) { return format.find("%n") != std::string_view::npos; }

bool UsesDigits(std::string_view format) { return UsesNumber(format) || format.find("%u") != std::string_view::npos; }

}  // namespace ml::batch
