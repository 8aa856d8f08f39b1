#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kComments = "Comments";
constexpr std::string_view kMerging = "Applying IPTC data to several images";

constexpr PreferenceRow kRows[] = {
    {"IPTCcomments", kComments, "&Use IPTC captions as comments",
     "An image with an IPTC caption shows it as its comment, and a comment is also written as caption.", CheckField{}},
    {"IptcMergeKeywords", kMerging, "&Add to keywords and categories",
     "New keywords and supplemental categories join those of the image; otherwise they replace them.", CheckField{}},
    {"IptcOnlyReplaceEmpty", kMerging, "&Only fill fields that are empty",
     "Fields of the image that hold a text keep it.", CheckField{}},
    {"IptcLeaveExistingIfNewEmpty", kMerging, "&Leave fields alone for which there is no new text",
     "Otherwise an empty new field empties that of the image.", CheckField{}},
    {"IptcExifTimestamp", kMerging, "&Set date and time to those of the shot",
     "Date and time created are taken from each image's EXIF data.", CheckField{}},
};

}  // namespace

std::span<const PreferenceRow> IptcRows() { return kRows; }

}  // namespace ml::app
