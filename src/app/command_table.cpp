#include "app/command_table.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace ml::app {
namespace {

using catalogue::SortMethod;
using S = const CommandState&;

bool Always(S) { return true; }
bool NotEmpty(S s) { return s.imageCount > 0; }
bool ListOfImages(S s) { return s.mode != ViewMode::Main && s.imageCount > 0; }
bool InMain(S s) { return s.mode == ViewMode::Main; }

bool CanGoForward(S s) { return InMain(s) && s.imageCount != 1 && (s.currentIndex < s.imageCount - 1 || s.wraparound); }
bool CanGoBack(S s) { return InMain(s) && s.imageCount != 1 && (s.currentIndex > 0 || s.wraparound); }

bool CanAddTag(S s) { return InMain(s) ? HaveTarget(s) && !s.targetTagged : s.selectedCount > 0; }
bool CanRemoveTag(S s) { return InMain(s) ? HaveTarget(s) && s.targetTagged : s.selectedCount > 0; }

template <int size>
bool ShowsSize(S s) {
  return s.mode != ViewMode::Main && s.thumbnailSizeMode == size;
}
template <SortMethod method>
bool SortedBy(S s) {
  return s.sortMethod == method;
}

constexpr CommandRow kCommands[] = {
    {CommandId::OpenDirectory, Menu::File, 0, "&Open Directory...", "Choose a directory to show", "Ctrl+O",
     "folder-open", Always},
    {CommandId::ParentDirectory, Menu::File, 0, "&Parent Directory", "Show the directory above this one",
     "Alt+Up; Backspace", "go-up", [](S s) { return s.hasParentDirectory; }},
    {CommandId::RefreshDirectory, Menu::File, 0, "Re&fresh Directory", "Read the directory again", "F5; Ctrl+F5",
     "view-refresh", Always},
    {CommandId::LoadTags, Menu::File, 1, "&Load Tags...", "Tag the images that a file names", "Ctrl+Shift+O", "",
     NotEmpty},
    {CommandId::MergeTags, Menu::File, 1, "&Merge Tags...", "Tag the images that a file names, keeping other tags", "",
     "", NotEmpty},
    {CommandId::SaveTags, Menu::File, 1, "&Save Tags...", "Write the names of the tagged images to a file",
     "Ctrl+Shift+S", "document-save-as", [](S s) { return s.taggedCount > 0; }},
    {CommandId::RecentDirectory, Menu::File, 2, "Recent Directory", "Load this directory", "", "", Always},
    {CommandId::Quit, Menu::File, 3, "&Quit", "End the program", "Ctrl+Q", "application-exit", Always},

    {CommandId::SelectAll, Menu::Edit, 0, "Select &All", "Select all images", "Ctrl+A", "edit-select-all",
     ListOfImages},
    {CommandId::SelectNone, Menu::Edit, 0, "Select N&one", "Select nothing", "Ctrl+Shift+A", "edit-select-none",
     ListOfImages},
    {CommandId::InvertSelection, Menu::Edit, 0, "&Invert Selection", "Select the images that are not selected",
     "Ctrl+Shift+I", "", ListOfImages},
    {CommandId::SelectTagged, Menu::Edit, 0, "Select Ta&gged", "Select the tagged images", "Ctrl+G", "", ListOfImages},
    {CommandId::TagImage, Menu::Edit, 1, "&Tag Image", "Tag the image, or take its tag away", "Space; Ctrl+T", "tag",
     HaveTarget, Mark::Check, [](S s) { return s.targetTagged; }},
    {CommandId::AddTag, Menu::Edit, 1, "A&dd tag", "Tag the image, or the selected images", "Ctrl++; Ctrl+=", "",
     CanAddTag},
    {CommandId::RemoveTag, Menu::Edit, 1, "&Remove Tag", "Take the tag from the image, or from the selected images",
     "Ctrl+-", "", CanRemoveTag},
    {CommandId::TagSelected, Menu::Edit, 2, "Tag &Selected", "Tag the selected images", "", "", ListOfImages},
    {CommandId::UntagSelected, Menu::Edit, 2, "&Untag Selected", "Take the tags from the selected images", "", "",
     ListOfImages},
    {CommandId::TagNone, Menu::Edit, 2, "Tag &None", "Take all tags away", "", "", ListOfImages},
    {CommandId::MoveTaggedToStart, Menu::Edit, 3, "&Move tagged images to start",
     "Put the tagged images before the others", "Ctrl+Home", "",
     [](S s) { return s.mode != ViewMode::Main && s.taggedBehindUntagged; }},

    {CommandId::MainView, Menu::View, 0, "&Main View", "Show one image", "1", "view-main", Always, Mark::Radio, InMain},
    {CommandId::ThumbnailView, Menu::View, 0, "&Thumbnail View", "Show the thumbnails of the directory", "2; Esc",
     "view-thumbnails", Always, Mark::Radio, [](S s) { return s.mode == ViewMode::Thumbnails; }},
    {CommandId::ToggleView, Menu::View, 0, "S&witch View", "Switches between the main view and thumbnail view",
     "Ctrl+Tab", "", Always},
    {CommandId::SmallThumbnails, Menu::View, 1, "&Small Thumbnails", "Show small thumbnails", "Ctrl+1",
     "thumbnails-small", Always, Mark::Radio, ShowsSize<0>},
    {CommandId::LargeThumbnails, Menu::View, 1, "&Large Thumbnails", "Show large thumbnails", "Ctrl+2",
     "thumbnails-large", Always, Mark::Radio, ShowsSize<1>},
    {CommandId::ExtraLargeThumbnails, Menu::View, 1, "E&xtra Large Thumbnails", "Show extra large thumbnails", "Ctrl+3",
     "thumbnails-extra-large", Always, Mark::Radio, ShowsSize<2>},

    {CommandId::SortNumerically, Menu::Sort, 0, "Sort &Numerically", "Sort by the number in the file name", "", "",
     Always, Mark::Radio, SortedBy<SortMethod::Numeric>},
    {CommandId::SortAlphabetically, Menu::Sort, 0, "Sort &Alphabetically", "Sort by file name", "", "", Always,
     Mark::Radio, SortedBy<SortMethod::Alphabetical>},
    {CommandId::SortByTimestamp, Menu::Sort, 0, "Sort by &Timestamp", "Sort by shooting time", "", "", Always,
     Mark::Radio, SortedBy<SortMethod::Timestamp>},
    {CommandId::SortByFileType, Menu::Sort, 0, "Sort by &File Type", "Sort by kind of file", "", "", Always,
     Mark::Radio, SortedBy<SortMethod::FileType>},
    {CommandId::CustomOrder, Menu::Sort, 0, "&Custom Order", "Go back to the order made by hand", "", "",
     [](S s) { return s.hasCustomOrder || s.sortMethod == SortMethod::Custom; }, Mark::Radio,
     SortedBy<SortMethod::Custom>},
    {CommandId::ReverseSortOrder, Menu::Sort, 1, "&Reverse Sort Order", "Sort from the last to the first", "", "",
     [](S s) { return s.sortMethod != SortMethod::Custom; }, Mark::Check, [](S s) { return s.reverseSort; }},
    {CommandId::SaveCustomOrder, Menu::Sort, 2, "&Save Custom Order", "Write this order into the directory", "", "",
     [](S s) { return s.sortMethod == SortMethod::Custom; }},
    {CommandId::SaveCustomOrderAs, Menu::Sort, 2, "Save Custom &Order As...", "Write this order to a file of your own",
     "", "", NotEmpty},
    {CommandId::LoadCustomOrder, Menu::Sort, 2, "&Load Custom Order...", "Take the order that a file holds", "", "",
     NotEmpty},

    {CommandId::HighQuality, Menu::View, 3, "&High Quality", "Scale the picture with care", "", "", Always, Mark::Check,
     [](S s) { return s.highQuality; }},
    {CommandId::BlackAndWhite, Menu::View, 3, "View in &Black and White", "Show pictures without colour", "", "",
     Always, Mark::Check, [](S s) { return s.blackAndWhite; }},
    {CommandId::Histogram, Menu::View, 3, "H&istogram", "Show the histogram in a window of its own", "Ctrl+A", "",
     [](S s) { return s.mode != ViewMode::Thumbnails; }, Mark::Check, [](S s) { return s.histogramShown; }, InMain},
    {CommandId::ShowFocusPoints, Menu::View, 3, "Show &Focus Points", "Mark where the camera measured the focus", "",
     "", [](S s) { return s.mode != ViewMode::Thumbnails && s.targetFromCanonEos; }, Mark::Check,
     [](S s) { return s.focusPoints; }},
    {CommandId::ShowFlashingHighlights, Menu::View, 3, "Show Flashing Hi&ghlights",
     "Let the blown parts of the picture flash", "", "", Always, Mark::Check, [](S s) { return s.flashingHighlights; }},
    {CommandId::ShowControls, Menu::View, 4, "Show &Controls", "Show the controls beside the picture, or give it all",
     "F11", "", InMain, Mark::Check, [](S s) { return !s.fullView; }},
    {CommandId::StatusBar, Menu::View, 4, "Status Ba&r", "Show the status bar", "", "", Always, Mark::Check,
     [](S s) { return s.statusBarShown; }},

    {CommandId::PreviousImage, Menu::Image, 0, "&Previous Image", "Show the image before this one", "Left; Up; PgUp",
     "go-previous", CanGoBack},
    {CommandId::NextImage, Menu::Image, 0, "&Next Image", "Show the image after this one", "Right; Down; PgDown",
     "go-next", CanGoForward},
    {CommandId::FirstImage, Menu::Image, 0, "&First Image", "Show the first image", "Home", "",
     [](S s) { return InMain(s) && s.currentIndex > 0; }},
    {CommandId::LastImage, Menu::Image, 0, "&Last Image", "Show the last image", "End", "",
     [](S s) { return InMain(s) && s.currentIndex < s.imageCount - 1; }},
    {CommandId::Wraparound, Menu::Image, 1, "&Wraparound", "Go on at the other end of the directory", "", "", Always,
     Mark::Check, [](S s) { return s.wraparound; }},

    {CommandId::KeyboardShortcuts, Menu::Help, 0, "&Keyboard Shortcuts", "List all keys", "F1", "help-contents",
     Always},
    {CommandId::About, Menu::Help, 0, "&About Marrowlantern", "Name and version", "", "help-about", Always},
};

constexpr PaneKey kPaneKeys[] = {
    {"Arrows; PgUp; PgDown; Home; End", "Thumbnails", "Move to another image; with Shift the selection grows"},
    {"Return", "Thumbnails", "Show the image in the main view"},
    {"Letters and digits", "Thumbnails", "Move to the image whose name begins so"},
    {"Arrows; Return", "Directories", "Choose a directory, open and close its branches"},
    {"Tab; Shift+Tab", "Window", "Move to the next pane"},
};

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }

const CommandRow& FindCommand(CommandId id) {
  const auto* row = std::ranges::find(kCommands, id, &CommandRow::id);
  if (row == std::end(kCommands))
    throw std::logic_error("a command has no row: " + std::to_string(static_cast<int>(id)));
  return *row;
}

std::string_view MenuTitle(Menu menu) {
  static constexpr std::array<std::string_view, 6> kTitles{"&File", "&Edit", "&View", "S&ort", "&Image", "&Help"};
  return kTitles.at(static_cast<std::size_t>(menu));
}

std::span<const PaneKey> PaneKeys() { return kPaneKeys; }

}  // namespace ml::app
