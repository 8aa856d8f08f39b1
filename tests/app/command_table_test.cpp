#include "app/command_table.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace ml::app {
namespace {

using catalogue::SortMethod;
using Id = CommandId;

CommandState Main(int count, int current) {
  CommandState state;
  state.mode = ViewMode::Main;
  state.imageCount = count;
  state.currentIndex = current;
  return state;
}

CommandState Thumbs(int count, int focus, int selected = 0) {
  CommandState state;
  state.imageCount = count;
  state.focusIndex = focus;
  state.selectedCount = selected;
  return state;
}

template <class Change>
CommandState With(CommandState state, Change change) {
  change(state);
  return state;
}
CommandState Around(CommandState state) {
  state.wraparound = true;
  return state;
}
CommandState Tagged(CommandState state) {
  state.targetTagged = true;
  return state;
}
CommandState Sorted(SortMethod method, bool remembered = false) {
  CommandState state;
  state.sortMethod = method;
  state.hasCustomOrder = remembered;
  return state;
}

struct RuleCase {
  const char* name;
  Id id;
  CommandState state;
  bool on;
};

class CommandRules : public testing::TestWithParam<RuleCase> {};

TEST_P(CommandRules, DecideWhatIsOn) { EXPECT_EQ(FindCommand(GetParam().id).enabled(GetParam().state), GetParam().on); }

INSTANTIATE_TEST_SUITE_P(Navigation, CommandRules,
                         testing::Values(RuleCase{"NextInTheMiddle", Id::NextImage, Main(3, 1), true},
                                         RuleCase{"NextAtTheEnd", Id::NextImage, Main(3, 2), false},
                                         RuleCase{"NextAroundTheEnd", Id::NextImage, Around(Main(3, 2)), true},
                                         RuleCase{"NextOfOne", Id::NextImage, Around(Main(1, 0)), false},
                                         RuleCase{"NextOfNone", Id::NextImage, Main(0, -1), false},
                                         RuleCase{"NextOfNoneAround", Id::NextImage, Around(Main(0, -1)), true},
                                         RuleCase{"NextInThumbnails", Id::NextImage, Thumbs(3, 0), false},
                                         RuleCase{"PreviousAtTheStart", Id::PreviousImage, Main(3, 0), false},
                                         RuleCase{"PreviousAroundTheStart", Id::PreviousImage, Around(Main(3, 0)),
                                                  true},
                                         RuleCase{"PreviousInTheMiddle", Id::PreviousImage, Main(3, 1), true},
                                         RuleCase{"PreviousOfOne", Id::PreviousImage, Around(Main(1, 0)), false}),
                         [](const auto& c) { return std::string(c.param.name); });

INSTANTIATE_TEST_SUITE_P(
    TagsAndSelection, CommandRules,
    testing::Values(RuleCase{"SelectAll", Id::SelectAll, Thumbs(2, -1), true},
                    RuleCase{"SelectAllOfNone", Id::SelectAll, Thumbs(0, -1), false},
                    RuleCase{"SelectAllInMain", Id::SelectAll, Main(2, 0), false},
                    RuleCase{"TagNoneInMain", Id::TagNone, Main(2, 0), false},
                    RuleCase{"AddTagToTheCurrent", Id::AddTag, Main(2, 0), true},
                    RuleCase{"AddTagTwice", Id::AddTag, Tagged(Main(2, 0)), false},
                    RuleCase{"AddTagWithoutImage", Id::AddTag, Main(0, -1), false},
                    RuleCase{"AddTagToTheSelected", Id::AddTag, Tagged(Thumbs(2, 0, 1)), true},
                    RuleCase{"AddTagToNothingSelected", Id::AddTag, Thumbs(2, 0, 0), false},
                    RuleCase{"RemoveTag", Id::RemoveTag, Tagged(Main(2, 0)), true},
                    RuleCase{"RemoveTagWithoutTag", Id::RemoveTag, Main(2, 0), false},
                    RuleCase{"RemoveTagsOfTheSelected", Id::RemoveTag, Thumbs(2, 0, 2), true},
                    RuleCase{"TagImageNeedsFocus", Id::TagImage, Thumbs(2, -1, 2), false},
                    RuleCase{"TagImageWithFocus", Id::TagImage, Thumbs(2, 1), true},
                    RuleCase{"TagImageBehindTheEnd", Id::TagImage, Thumbs(2, 2), false},
                    RuleCase{"LoadTags", Id::LoadTags, Main(1, 0), true},
                    RuleCase{"LoadTagsOfNone", Id::LoadTags, Thumbs(0, -1), false},
                    RuleCase{"SaveTagsWithoutTags", Id::SaveTags, Thumbs(3, 0), false},
                    RuleCase{"SaveTags", Id::SaveTags, With(Thumbs(3, 0), [](auto& s) { s.taggedCount = 1; }), true},
                    RuleCase{"TaggedToStart", Id::MoveTaggedToStart,
                             With(Thumbs(3, 0), [](auto& s) { s.taggedBehindUntagged = true; }), true},
                    RuleCase{"TaggedToStartInMain", Id::MoveTaggedToStart,
                             With(Main(3, 0), [](auto& s) { s.taggedBehindUntagged = true; }), false},
                    RuleCase{"TaggedAtStart", Id::MoveTaggedToStart, Thumbs(3, 0), false}),
    [](const auto& c) { return std::string(c.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Order, CommandRules,
    testing::Values(RuleCase{"NoCustomOrder", Id::CustomOrder, Sorted(SortMethod::Numeric), false},
                    RuleCase{"RememberedCustomOrder", Id::CustomOrder, Sorted(SortMethod::Numeric, true), true},
                    RuleCase{"InCustomOrder", Id::CustomOrder, Sorted(SortMethod::Custom), true},
                    RuleCase{"Reverse", Id::ReverseSortOrder, Sorted(SortMethod::FileType), true},
                    RuleCase{"ReverseCustom", Id::ReverseSortOrder, Sorted(SortMethod::Custom), false},
                    RuleCase{"SaveCustom", Id::SaveCustomOrder, Sorted(SortMethod::Custom), true},
                    RuleCase{"SaveNoCustom", Id::SaveCustomOrder, Sorted(SortMethod::Timestamp, true), false}),
    [](const auto& c) { return std::string(c.param.name); });

CommandState OfKind(CommandState state, bool FileKinds::*kind) {
  state.targetKinds.*kind = state.kinds.*kind = true;
  return state;
}
CommandState SoundBeside(CommandState state) {
  state.targetHasSound = true;
  return state;
}
/// Nothing has the focus, some are selected: there is no target, but there is something.
CommandState Chosen() { return Thumbs(9, -1, 2); }
CommandState InTree(CommandState state, bool atRoot) {
  state.treeHasFocus = true;
  state.treeAtDriveRoot = atRoot;
  return state;
}
CommandState BesideGallery(CommandState state) {
  state.hasGallery = true;
  return state;
}

INSTANTIATE_TEST_SUITE_P(
    Files, CommandRules,
    testing::Values(RuleCase{"RotateTheCurrent", Id::RotateLeft, Main(3, 0), true},
                    RuleCase{"RotateWithoutSelection", Id::RotateRight, Thumbs(3, 0), false},
                    RuleCase{"RotateTheSelected", Id::RotateRight, Chosen(), true},
                    RuleCase{"MoveTheSelected", Id::MoveToFolder, Chosen(), true},
                    RuleCase{"MoveTheFocused", Id::MoveToFolder, Thumbs(3, 1), true},
                    RuleCase{"MoveNothing", Id::MoveToFolder, Thumbs(3, -1), false},
                    RuleCase{"SelectedInMainDoNotCount", Id::Slideshow,
                             With(Main(3, -1), [](auto& s) { s.selectedCount = 2; }), false},
                    RuleCase{"RenameNeedsATarget", Id::RenameImage, Chosen(), false},
                    RuleCase{"DeleteImages", Id::Delete, Chosen(), true},
                    RuleCase{"DeleteNothing", Id::Delete, Thumbs(3, -1), false},
                    RuleCase{"DeleteDirectory", Id::Delete, InTree(Thumbs(0, -1), false), true},
                    RuleCase{"DeleteNoDrive", Id::Delete, InTree(Chosen(), true), false},
                    RuleCase{"PrintAll", Id::Print, Thumbs(3, -1), true},
                    RuleCase{"PrintNoVideo", Id::PrintPreview, OfKind(Main(3, 0), &FileKinds::avi), false},
                    RuleCase{"PrintSelectedVideo", Id::Print, OfKind(Chosen(), &FileKinds::avi), true},
                    RuleCase{"GalleryOfTheChosen", Id::Html, Chosen(), true},
                    RuleCase{"GalleryAnew", Id::Html, BesideGallery(Thumbs(3, -1)), true},
                    RuleCase{"NoGallery", Id::Html, Thumbs(3, -1), false},
                    RuleCase{"NoGalleryInMain", Id::Html, BesideGallery(Main(3, -1)), false}),
    [](const auto& c) { return std::string(c.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Kinds, CommandRules,
    testing::Values(RuleCase{"CopyExifToJpeg", Id::CopyExifFrom, OfKind(Main(1, 0), &FileKinds::jpeg), true},
                    RuleCase{"CopyExifToTiff", Id::CopyExifFrom, OfKind(Main(1, 0), &FileKinds::tiff), true},
                    RuleCase{"CopyExifToRaw", Id::CopyExifFrom, OfKind(Main(1, 0), &FileKinds::raw), false},
                    RuleCase{"ConvertRaw", Id::ConvertRawImage, OfKind(Thumbs(1, 0), &FileKinds::raw), true},
                    RuleCase{"ConvertWithoutTarget", Id::ConvertRawImage, OfKind(Chosen(), &FileKinds::raw), false},
                    RuleCase{"ConvertRawAmongOthers", Id::BatchConvert, OfKind(Chosen(), &FileKinds::raw), true},
                    RuleCase{"ConvertNoRaw", Id::BatchConvert, OfKind(Chosen(), &FileKinds::jpeg), false},
                    RuleCase{"ExtractJpegs", Id::ExtractJpegs, OfKind(Main(1, 0), &FileKinds::raw), true},
                    RuleCase{"RegenerateOnlyCrw", Id::RegenerateJpegs, OfKind(Chosen(), &FileKinds::raw), false},
                    RuleCase{"RegenerateCrw", Id::RegenerateJpegs, OfKind(Chosen(), &FileKinds::crw), true},
                    RuleCase{"PlayVideo", Id::PlayVideo, OfKind(Main(1, 0), &FileKinds::avi), true},
                    RuleCase{"PlayNoVideo", Id::PlayVideo, OfKind(Main(1, 0), &FileKinds::jpeg), false},
                    RuleCase{"PlaySound", Id::PlaySound, SoundBeside(Main(1, 0)), true},
                    RuleCase{"PlayNoSound", Id::PlaySound, Main(1, 0), false},
                    RuleCase{"Iptc", Id::EditIptcData, OfKind(Main(1, 0), &FileKinds::holdsIptc), true},
                    RuleCase{"NoIptc", Id::EditIptcData, OfKind(Main(1, 0), &FileKinds::jpeg), false},
                    RuleCase{"AutoRotate", Id::AutoRotateJpegs, OfKind(Chosen(), &FileKinds::jpeg), true},
                    RuleCase{"AutoRotateRaw", Id::AutoRotateJpegs, OfKind(Chosen(), &FileKinds::raw), false}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(CommandMarks, FollowTheState) {
  auto state = Thumbs(1, 0);
  state.thumbnailSizeMode = 1;
  EXPECT_TRUE(FindCommand(Id::LargeThumbnails).checked(state));
  EXPECT_FALSE(FindCommand(Id::SmallThumbnails).checked(state));
  state.mode = ViewMode::Main;
  EXPECT_FALSE(FindCommand(Id::LargeThumbnails).checked(state));
  EXPECT_TRUE(FindCommand(Id::MainView).checked(state));
  state.mode = ViewMode::FilmStripBelow;
  EXPECT_TRUE(FindCommand(Id::FilmStripView).checked(state));
  EXPECT_FALSE(FindCommand(Id::FilmStripSide).checked(state));
  EXPECT_TRUE(FindCommand(Id::LargeThumbnails).checked(state));
  state.fullView = true;
  EXPECT_FALSE(FindCommand(Id::ShowControls).checked(state));
  const auto& points = FindCommand(Id::ShowFocusPoints);
  state.focusPoints = state.targetFromCanonEos = true;
  EXPECT_TRUE(points.enabled(state));
  state.mode = ViewMode::Thumbnails;
  EXPECT_FALSE(points.enabled(state));
  EXPECT_TRUE(points.checked(state)) << "off, but still marked";
}

TEST(CommandTable, IsWhole) {
  std::set<Id> seen;
  std::map<std::pair<Menu, char>, std::string> mnemonics;
  for (const auto& row : Commands()) {
    EXPECT_TRUE(seen.insert(row.id).second) << row.text;
    EXPECT_EQ(row.mark != Mark::None, row.checked != nullptr) << row.text;
    EXPECT_FALSE(row.tip.empty()) << row.text;
    const auto mark = row.text.find('&');
    if (row.id == Id::RecentDirectory) continue;
    ASSERT_LT(mark + 1, row.text.size()) << row.text << " has no mnemonic";
    const auto key = static_cast<char>(std::tolower(row.text[mark + 1]));
    const auto [place, fresh] = mnemonics.try_emplace({row.menu, key}, row.text);
    EXPECT_TRUE(fresh) << row.text << " has the mnemonic of " << place->second;
  }
  EXPECT_EQ(seen.size(), static_cast<std::size_t>(kCommandCount));
}

bool HasKeyIn(const CommandRow& row, const CommandState& state) {
  return row.enabled(state) && (row.keysIn == nullptr || row.keysIn(state));
}

/// A key for two commands that can be on at the same time would do nothing.
TEST(CommandTable, NoKeyTwice) {
  for (const auto mode : {ViewMode::Main, ViewMode::Thumbnails, ViewMode::FilmStripSide, ViewMode::FilmStripBelow}) {
    const CommandState state{.mode = mode,
                             .imageCount = 3,
                             .currentIndex = 1,
                             .focusIndex = 1,
                             .selectedCount = 1,
                             .taggedCount = 1,
                             .wraparound = true,
                             .hasParentDirectory = true};
    std::map<std::string, const CommandRow*> owners;
    for (const auto& row : Commands()) {
      std::string keys(row.keys);
      for (std::size_t begin = 0; begin < keys.size();) {
        const auto end = std::min(keys.find("; ", begin), keys.size());
        const auto [owner, fresh] = owners.try_emplace(keys.substr(begin, end - begin), &row);
        EXPECT_TRUE(fresh || !HasKeyIn(row, state) || !HasKeyIn(*owner->second, state))
            << owner->first << " is the key of " << owner->second->text << " and of " << row.text;
        begin = end + 2;
      }
    }
  }
}

}  // namespace
}  // namespace ml::app
