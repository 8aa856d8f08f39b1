#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kStart = "At the start";
constexpr std::string_view kDirectories = "Directories";
constexpr std::string_view kMoving = "Moving between images";
constexpr std::string_view kViewingJpegs = "Viewing JPEGs of EOS-1D raw files";

constexpr Choice kDoubleClick[] = {
    {"0", "Shows the image in the main view"},
    {"1", "Shows the image at its actual size"},
    {"2", "Opens the image in the editor"},
    {"3", "Switches between main view and film strip at the side"},
    {"4", "Switches between main view and film strip below"},
    {"5", "Switches between thumbnails and film strip at the side"},
    {"6", "Switches between thumbnails and film strip below"},
};
constexpr Choice kJpegSize[] = {{"1", "Full size"}, {"0", "Half size"}};

constexpr PreferenceRow kRows[] = {
    {"LoadDirectoryAtStartup", kStart, "Open the &last directory",
     "Without names on the command line the program shows the directory and the image that it was left with.",
     CheckField{}},
    {"ShowHiddenDirectories", kDirectories, "Show &hidden files and directories",
     "Also lists what has a name that begins with a dot.", CheckField{}, Effects{Effect::ReloadDirectory}},
    {"SuppressMarrowlanternDatFile", kDirectories, "Do &not write marrowlantern.dat into directories",
     "The order of the images is then kept only where you ask for it: with Save Custom Order, or by answering Yes "
     "when you leave a directory in which you moved images by hand.",
     CheckField{}},
    {"Wraparound", kMoving, "&Wrap around at both ends",
     "After the last image comes the first one, and before the first image the last one.", CheckField{}},
    {"ImageDclickAction", kMoving, "Double &click:", "What a double click on an image, or Return, does.",
     ChoiceField{kDoubleClick}},
    {"BindJpegToEos1DRaw", kViewingJpegs, "Hide &viewing JPEGs behind their raw files",
     "A JPEG with the name of a raw file is not listed by itself; it is shown in place of the raw file, and moved, "
     "renamed and deleted with it.",
     CheckField{}, Effects{Effect::ReloadDirectory, Effect::RemakeThumbnails, Effect::ReloadPicture}},
    {"AutoCreateEos1DRawJpegs", kViewingJpegs, "&Make missing viewing JPEGs",
     "When a directory is loaded, each raw file that lacks its viewing JPEG gets one.", CheckField{}},
    {"LargeEos1DRawJpegs", kViewingJpegs,
     "&Size of new viewing JPEGs:", "Half size takes a quarter of the room on the disk.", ChoiceField{kJpegSize}},
};

}  // namespace

std::span<const PreferenceRow> BrowsingRows() { return kRows; }

}  // namespace ml::app
