#pragma once

#include <span>
#include <string_view>

#include "app/command_state.h"

/// Everything the user can tell the window to do: one row a command. Menus, tool bar, keys, the page of keys
/// and the enabling are made from this table alone; a new command is one row and one handler. A row without a
/// handler shows, but cannot be run in this version; HasHandler() tells.
namespace ml::app {

enum class CommandId {
  OpenDirectory,
  ParentDirectory,
  RefreshDirectory,
  NewFolder,
  RenameFolder,
  Explore,
  DirectoryProperties,
  RecentDirectory,  ///< its argument is the place in the list, from 0
  LoadTags,
  MergeTags,
  SaveTags,
  Quit,
  SelectAll,
  SelectNone,
  InvertSelection,
  SelectTagged,
  TagImage,
  AddTag,
  RemoveTag,
  TagSelected,
  UntagSelected,
  TagNone,
  MoveTaggedToStart,
  Preferences,
  MainView,
  ThumbnailView,
  ToggleView,
  SmallThumbnails,
  LargeThumbnails,
  ExtraLargeThumbnails,
  SortNumerically,
  SortAlphabetically,
  SortByTimestamp,
  SortByFileType,
  CustomOrder,
  ReverseSortOrder,
  SaveCustomOrder,
  SaveCustomOrderAs,
  LoadCustomOrder,
  HighQuality,
  BlackAndWhite,
  Histogram,
  ShowFocusPoints,
  ShowFlashingHighlights,
  ShowControls,
  StatusBar,
  PreviousImage,
  NextImage,
  FirstImage,
  LastImage,
  Wraparound,
  FilmStripView,  ///< from one arrangement of the film strip to the other
  FilmStripSide,
  FilmStripBelow,
  ShowExifData,
  ShootingData,  ///< its window
  Undo,
  RotateLeft,
  RotateRight,
  EditImage,
  EditComments,
  EditIptcData,
  ImageProperties,
  ViewActualImage,
  ConvertRawImage,
  PlayVideo,
  PlaySound,
  CopyExifFrom,
  Slideshow,
  RenameImage,
  BatchRename,
  MoveToFolder,
  CopyToFolder,
  Delete,
  DeletePermanently,
  Email,
  Print,
  PrintPreview,
  BatchConvert,
  ExtractJpegs,
  RegenerateJpegs,
  Html,
  Proofs,
  Timestamp,
  AdjustDateTime,
  ExifCopy,
  ExportExif,
  AutoRotateJpegs,
  EmbedColorProfile,
  RegenerateThumbnails,
  HelpContents,
  KeyboardShortcuts,
  About,
  kCount
};
inline constexpr int kCommandCount = static_cast<int>(CommandId::kCount);

enum class Menu { File, Edit, View, Sort, Image, Tools, Help };
inline constexpr int kMenuCount = static_cast<int>(Menu::Help) + 1;

/// How a command that has a state shows it.
enum class Mark { None, Check, Radio };

/// The group of a command that has keys and no place in a menu.
inline constexpr int kKeysOnly = -1;

struct CommandRow {
  CommandId id;
  Menu menu;
  int group;              ///< a line is drawn in the menu where it changes
  std::string_view text;  ///< with "&" before the mnemonic
  std::string_view tip;
  std::string_view keys;  ///< portable names, several joined by "; "
  std::string_view icon;  ///< freedesktop name or our own, may be empty
  Rule enabled;
  Mark mark = Mark::None;
  Rule checked = nullptr;  ///< present exactly where `mark` is not None
  Rule keysIn = nullptr;   ///< where its keys count, if not everywhere
};

/// In the order of the menus.
std::span<const CommandRow> Commands();
/// Every id but kCount has a row; a missing one is a mistake of ours and throws std::logic_error.
const CommandRow& FindCommand(CommandId id);
/// `text` without mnemonic and dots: "Save Tags".
std::string_view MenuTitle(Menu menu);

/// A key that a pane handles itself, listed with the others on the page of keys.
struct PaneKey {
  std::string_view keys, pane, effect;
};
std::span<const PaneKey> PaneKeys();

}  // namespace ml::app
