#include "app/preferences/pages/pages.h"
#include "app/preferences/thumbnail_limits.h"

namespace ml::app {
namespace {

constexpr std::string_view kSize = "Size";
constexpr std::string_view kLook = "Look";
constexpr std::string_view kSource = "Source";

constexpr Choice kSizes[] = {{"0", "Small (80 pixels)"}, {"1", "Large (160 pixels)"}, {"2", "Extra large"}};
constexpr Choice kBackgrounds[] = {{"White", "White"}, {"Gray", "Grey", "grey border"}, {"Black", "Black"}};
constexpr Choice kOutlines[] = {{"0", "None"}, {"1", "Thin"}, {"2", "Thick"}};
constexpr std::size_t kBlack = 2;

constexpr PreferenceRow kRows[] = {
    {"ThumbnailSize", kSize, "&Size:", "The same as the three sizes of the View menu.", ChoiceField{kSizes},
     Effects{Effect::ResizeThumbnails}},
    {"ExtraLargeThumbnailSize", kSize, "E&xtra large:",
     "Edge of the square that an extra large thumbnail fits into. Large ones take longer to make and more memory.",
     NumberField{kSmallestThumbnail, kLargestThumbnail, " pixels"}, Effects{Effect::ResizeThumbnails}},
    {"ThumbnailBackgroundColour", kLook, "&Background:", "The colours of the thumbnail list.",
     ChoiceField{kBackgrounds, kBlack}, Effects{Effect::RedrawThumbnails}},
    {"OutlineTaggedThumbnails",
     kLook,
     "&Line around tagged images:",
     "Drawn in addition to the tag mark in the corner.",
     ChoiceField{kOutlines},
     Effects{Effect::RedrawThumbnails},
     {},
     {},
     Example::ThumbnailScheme},
    {"IgnoreEmbeddedThumbnails", kSource, "&Ignore embedded thumbnails",
     "Makes thumbnails from the whole image even where the file brings a small one. Slower, but always right after an "
     "edit by a program that left the small one as it was.",
     CheckField{}, Effects{Effect::RemakeThumbnails}},
};

}  // namespace

std::span<const PreferenceRow> ThumbnailRows() { return kRows; }

}  // namespace ml::app
