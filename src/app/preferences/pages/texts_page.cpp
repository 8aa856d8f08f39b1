#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kImage = "About the image on show";

constexpr PreferenceRow kRows[] = {
    {"ExifFormatString", kImage, "&Status line:", "What the status line tells of the image.",
     FormatField{TextForm::Line}},
    {"MainExifFormatString", kImage, "&Main and thumbnail view:",
     "What stands in the box beside the picture and below the directories. \\n begins a new line.",
     FormatField{TextForm::Lines}},
    {"FilmStripExifFormatString", kImage,
     "Film s&trip:", "What the pane below the picture tells while the film strip is shown. \\n begins a new line.",
     FormatField{TextForm::Lines}},
};

}  // namespace

std::span<const PreferenceRow> TextRows() { return kRows; }

}  // namespace ml::app
