#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kDeleting = "Deleting";
constexpr std::string_view kChanging = "Changing images";

constexpr Choice kPlaces[] = {{"1", "Into the trash"}, {"0", "Into the subdirectory 'DELETED'"}};
constexpr std::size_t kTrash = 0;

constexpr PreferenceRow kRows[] = {
    {"ConfirmDelete", kDeleting, "Ask &before an image is deleted",
     "Several images at once, and deleting for good, always ask.", CheckField{}},
    {"RecycleDeletedFiles", kDeleting, "Deleted images &go:", "Where deleted images can be found again.",
     ChoiceField{kPlaces, kTrash}},
    {"PreserveImageModificationTime", kChanging, "&Keep the time of the file",
     "Rotating an image, or changing its comment, leaves the modification time as it was.", CheckField{}},
    {"TiffRotateWarning", kChanging, "&Warn before a TIFF is rewritten",
     "Rotating a TIFF rewrites it without compression and may lose what the program does not know.", CheckField{}},
};

}  // namespace

std::span<const PreferenceRow> FileRows() { return kRows; }

}  // namespace ml::app
