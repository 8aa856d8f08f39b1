#include "app/command_table.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "app/command_rules.h"

namespace ml::app {
namespace {

using namespace rules;
using catalogue::SortMethod;
using S = const CommandState&;

constexpr CommandRow kCommands[] = {
    {CommandId::OpenDirectory, Menu::File, 0, "&Open Directory...", "Choose a directory to show", "Ctrl+O",
     "folder-open", Always},
    {CommandId::ParentDirectory, Menu::File, 0, "&Parent Directory", "Show the directory above this one",
     "Alt+Up; Backspace", "go-up", [](S s) { return s.hasParentDirectory; }},
    {CommandId::RefreshDirectory, Menu::File, 0, "Re&fresh Directory", "Read the directory again", "F5; Ctrl+F5",
     "view-refresh", Always},
    {CommandId::NewFolder, Menu::File, 1, "&New Folder...", "Make a directory in the one chosen in the tree",
     "Ctrl+Shift+N", "", HasTreeDirectory},
    {CommandId::RenameFolder, Menu::File, 1, "Ren&ame Folder...", "Give the directory chosen in the tree another name",
     "Shift+F2", "", CanRenameFolder},
    {CommandId::Explore, Menu::File, 1, "E&xplore", "Show the directory chosen in the tree in the file manager", "", "",
     HasTreeDirectory},
    {CommandId::DirectoryProperties, Menu::File, 1, "Folder Proper&ties",
     "Tell what the directory chosen in the tree holds", "", "", HasTreeDirectory},
    {CommandId::LoadTags, Menu::File, 2, "&Load Tags...", "Tag the images that a file names", "Ctrl+Shift+O", "",
     NotEmpty},
    {CommandId::MergeTags, Menu::File, 2, "&Merge Tags...", "Tag the images that a file names, keeping other tags", "",
     "", NotEmpty},
    {CommandId::SaveTags, Menu::File, 2, "&Save Tags...", "Write the names of the tagged images to a file",
     "Ctrl+Shift+S", "document-save-as", [](S s) { return s.taggedCount > 0; }},
    {CommandId::RenameImage, Menu::File, 3, "&Rename Image...", "Give the image another name", "F2", "", HaveTarget},
    {CommandId::BatchRename, Menu::File, 3, "&Batch Rename...", "Name the images by their shooting data", "Ctrl+R", "",
     HaveSomething},
    {CommandId::MoveToFolder, Menu::File, 3, "Mo&ve to Folder...", "Move the images to another directory", "", "",
     HaveSomething},
    {CommandId::CopyToFolder, Menu::File, 3, "&Copy to Folder...", "Copy the images to another directory", "", "",
     HaveSomething},
    {CommandId::Delete, Menu::File, 3, "&Delete", "Delete the images, or the directory chosen in the tree", "Del",
     "edit-delete", CanDelete},
    {CommandId::DeletePermanently, Menu::File, kKeysOnly, "Delete Permanentl&y", "Delete without a way back",
     "Shift+Del", "", CanDelete},
    {CommandId::Email, Menu::File, 4, "&Email image(s)...", "Send the images by mail", "", "", HaveSomething},
    {CommandId::Print, Menu::File, 4, "Pr&int...", "Print images and contact sheets", "Ctrl+P", "document-print",
     CanPrint},
    {CommandId::PrintPreview, Menu::File, 4, "Print Previe&w", "Show what would be printed", "", "", CanPrint},
    {CommandId::RecentDirectory, Menu::File, 5, "Recent Directory", "Load this directory", "", "", Always},
    {CommandId::Quit, Menu::File, 6, "&Quit", "End the program", "Ctrl+Q", "application-exit", Always},

    {CommandId::Undo, Menu::Edit, 0, "&Undo", "Take back what was done last", "Ctrl+Z", "", Always},
    {CommandId::SelectAll, Menu::Edit, 1, "Select &All", "Select all images", "Ctrl+A", "edit-select-all",
     ListOfImages},
    {CommandId::SelectNone, Menu::Edit, 1, "Select N&one", "Select nothing", "Ctrl+Shift+A", "edit-select-none",
     ListOfImages},
    {CommandId::InvertSelection, Menu::Edit, 1, "&Invert Selection", "Select the images that are not selected",
     "Ctrl+Shift+I", "", ListOfImages},
    {CommandId::SelectTagged, Menu::Edit, 1, "Select Ta&gged", "Select the tagged images", "Ctrl+G", "", ListOfImages},
    {CommandId::TagImage, Menu::Edit, 2, "&Tag Image", "Tag the image, or take its tag away", "Space; Ctrl+T", "tag",
     HaveTarget, Mark::Check, [](S s) { return s.targetTagged; }},
    {CommandId::AddTag, Menu::Edit, 2, "A&dd tag", "Tag the image, or the selected images", "Ctrl++; Ctrl+=", "",
     CanAddTag},
    {CommandId::RemoveTag, Menu::Edit, 2, "&Remove Tag", "Take the tag from the image, or from the selected images",
     "Ctrl+-", "", CanRemoveTag},
    {CommandId::TagSelected, Menu::Edit, 3, "Tag &Selected", "Tag the selected images", "", "", ListOfImages},
    {CommandId::UntagSelected, Menu::Edit, 3, "Untag Se&lected", "Take the tags from the selected images", "", "",
     ListOfImages},
    {CommandId::TagNone, Menu::Edit, 3, "Tag &None", "Take all tags away", "", "", ListOfImages},
    {CommandId::MoveTaggedToStart, Menu::Edit, 4, "&Move tagged images to start",
     "Put the tagged images before the others", "Ctrl+Home", "",
     [](S s) { return s.mode != ViewMode::Main && s.taggedBehindUntagged; }},
    {CommandId::Preferences, Menu::Edit, 4, "&Preferences...", "Change how the program works", "Ctrl+,", "", Always},

    {CommandId::MainView, Menu::View, 0, "&Main View", "Show one image", "1", "view-main", Always, Mark::Radio, InMain},
    {CommandId::ThumbnailView, Menu::View, 0, "&Thumbnail View", "Show the thumbnails of the directory", "2; Esc",
     "view-thumbnails", Always, Mark::Radio, [](S s) { return s.mode == ViewMode::Thumbnails; }},
    {CommandId::FilmStripSide, Menu::View, 0, "Film Strip at the Si&de", "Show thumbnails beside one image", "3",
     "view-film-strip", Always, Mark::Radio, [](S s) { return s.mode == ViewMode::FilmStripSide; }},
    {CommandId::FilmStripBelow, Menu::View, 0, "Film Strip B&elow", "Show thumbnails below one image", "4",
     "view-film-strip-below", Always, Mark::Radio, [](S s) { return s.mode == ViewMode::FilmStripBelow; }},
    {CommandId::FilmStripView, Menu::View, 0, "Film Stri&p View",
     "Show one image with a strip of thumbnails, at its side or below", "F8", "view-film-strip", Always, Mark::Check,
     [](S s) { return IsFilmStrip(s.mode); }},
    {CommandId::ShowExifData, Menu::View, 0, "Show EXIF D&ata", "Show or hide the shooting data below the picture",
     "Ctrl+D", "", Always},
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
    {CommandId::ShootingData, Menu::View, 3, "Shooting Data Wi&ndow",
     "Show all that is known of the image in a window that follows it", "Ctrl+Shift+D", "", Always, Mark::Check,
     [](S s) { return s.shootingDataShown; }},
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
    {CommandId::RotateLeft, Menu::Image, 1, "Rotate Left (&CCW)", "Turn the image to the left, without loss",
     "Ctrl+Left", "object-rotate-left", CanRotate},
    {CommandId::RotateRight, Menu::Image, 1, "&Rotate Right (CW)", "Turn the image to the right, without loss",
     "Ctrl+Right", "object-rotate-right", CanRotate},
    {CommandId::ViewActualImage, Menu::Image, 2, "&View Actual Image", "Show the image in its own size", "", "",
     HaveTarget},
    {CommandId::EditImage, Menu::Image, 2, "&Edit Image", "Open the image in another program", "Ctrl+E", "",
     HaveTarget},
    {CommandId::ConvertRawImage, Menu::Image, 2, "Convert Raw Ima&ge...", "Develop the raw image", "Ctrl+K", "convert",
     [](S s) { return HaveTarget(s) && s.targetKinds.raw; }},
    {CommandId::PlayVideo, Menu::Image, 2, "Pla&y Video", "Play the video in another program", "", "",
     [](S s) { return HaveTarget(s) && s.targetKinds.avi; }},
    {CommandId::PlaySound, Menu::Image, 2, "Play S&ound", "Play the sound note beside the image in another program", "",
     "", [](S s) { return HaveTarget(s) && s.targetHasSound; }},
    {CommandId::EditComments, Menu::Image, 3, "Edit Co&mments...", "Write a comment into the image", "Ctrl+M", "",
     HaveTarget},
    {CommandId::EditIptcData, Menu::Image, 3, "Edit &IPTC Data...", "Write caption, keywords and more into the image",
     "Ctrl+I", "", [](S s) { return HaveTarget(s) && s.targetKinds.holdsIptc; }},
    {CommandId::CopyExifFrom, Menu::Image, 3, "Copy EXIF &data from...", "Take the shooting data of another file", "",
     "", [](S s) { return HaveTarget(s) && (s.targetKinds.jpeg || s.targetKinds.tiff); }},
    {CommandId::ImageProperties, Menu::Image, 3, "Image Proper&ties",
     "Show all that is known of the image, to be searched and copied", "Alt+Return", "", HaveTarget},
    {CommandId::Slideshow, Menu::Image, 4, "&Slideshow", "Show one image after the other on the whole screen", "Ctrl+L",
     "slideshow", HaveSomething},
    {CommandId::Wraparound, Menu::Image, 4, "&Wraparound", "Go on at the other end of the directory", "", "", Always,
     Mark::Check, [](S s) { return s.wraparound; }},

    {CommandId::BatchConvert, Menu::Tools, 0, "&Batch Convert...", "Develop the raw images", "Ctrl+Shift+K", "",
     AnyRaw},
    {CommandId::ExtractJpegs, Menu::Tools, 0, "&Extract embedded JPEGs...",
     "Write the JPEGs that lie in the raw files to files of their own", "", "", AnyRaw},
    {CommandId::RegenerateJpegs, Menu::Tools, 0, "&Regenerate embedded JPEGs...",
     "Make the JPEGs that lie in the raw files anew", "", "", [](S s) { return s.kinds.crw; }},
    {CommandId::Html, Menu::Tools, 1, "&HTML...", "Make a web gallery of the images", "", "html", CanMakeGallery},
    {CommandId::Proofs, Menu::Tools, 1, "&Proofs...", "Make small pictures with a watermark", "", "proofs",
     HaveSomething},
    {CommandId::Timestamp, Menu::Tools, 2, "&Timestamp...", "Set the times of the files to those of the shots", "", "",
     HaveSomething},
    {CommandId::AdjustDateTime, Menu::Tools, 2, "Adjust Image &Date/Time...", "Correct a camera clock that was wrong",
     "", "", HaveSomething},
    {CommandId::ExifCopy, Menu::Tools, 2, "EXIF &Copy...", "Copy shooting data between files of the same name", "", "",
     HaveSomething},
    {CommandId::ExportExif, Menu::Tools, 2, "E&xport EXIF data...", "Write the shooting data to a text file", "", "",
     HaveSomething},
    {CommandId::AutoRotateJpegs, Menu::Tools, 3, "&Auto Rotate JPEGs", "Turn the JPEGs as the camera was held", "", "",
     AnyJpeg},
    {CommandId::EmbedColorProfile, Menu::Tools, 3, "Embed Color Pro&file in JPEGs...",
     "Write a colour profile into the JPEGs", "", "", AnyJpeg},
    {CommandId::RegenerateThumbnails, Menu::Tools, 3, "Regenerate &JPEG Thumbnails",
     "Make the thumbnails inside the JPEGs anew", "", "", AnyJpeg},

    {CommandId::HelpContents, Menu::Help, 0, "&Contents", "Open the manual in the browser", "F1", "help-contents",
     Always},
    {CommandId::KeyboardShortcuts, Menu::Help, 0, "&Keyboard Shortcuts", "List all keys", "Ctrl+F1", "", Always},
    {CommandId::About, Menu::Help, 0, "&About Marrowlantern", "Name and version", "", "help-about", Always},
};

constexpr PaneKey kPaneKeys[] = {
    {"Arrows; PgUp; PgDown; Home; End", "Thumbnails", "Move to another image; with Shift the selection grows"},
    {"Return", "Thumbnails", "Show the image, as the settings want it"},
    {"Letters and digits", "Thumbnails", "Move to the image whose name begins so"},
    {"Wheel", "Main view", "Go from image to image; with Shift by twenty, with Ctrl turn the image"},
    {"Drag", "Thumbnails", "To another place in the list, or onto a directory of the tree"},
    {"Drop", "Directories", "Move or copy images there; with Ctrl copy, with Shift move"},
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
  static constexpr std::array<std::string_view, kMenuCount> kTitles{"&File",  "&Edit",  "&View", "S&ort",
                                                                    "&Image", "&Tools", "&Help"};
  return kTitles.at(static_cast<std::size_t>(menu));
}

std::span<const PaneKey> PaneKeys() { return kPaneKeys; }

}  // namespace ml::app
