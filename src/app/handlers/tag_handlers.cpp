#include "app/command_runner.h"
#include "app/file_dialogs.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/messages.h"
#include "app/session.h"

namespace ml::app {
namespace {

template <void (catalogue::ImageList::*change)()>
void ForAll(CommandContext& context) {
  (context.session.list.*change)();
}

/// In the thumbnail view, where only the focus tells which image a command for one means.
void BringFocusToSelection(CommandContext& context) {
  auto& list = context.session.list;
  if (context.session.mode != ViewMode::Thumbnails || !list.ValidIndex(list.focusIndex)) return;
  const auto selected = list.SelectedIndices();
  if (selected.empty() || list.marks[static_cast<std::size_t>(list.focusIndex)].selected) return;
  list.focusIndex = selected.front();
  context.view.LoadImage(list.focusIndex, Reload::IfOther);
}

/// The selection commands also bring the list to the keyboard, so that the next key acts on what they chose.
template <void (catalogue::ImageList::*change)()>
void Select(CommandContext& context) {
  context.view.FocusList();
  ForAll<change>(context);
  BringFocusToSelection(context);
}

void ToggleTag(CommandContext& context) {
  auto& session = context.session;
  if (const int target = session.TargetIndex(); target >= 0) session.list.ToggleTag(target);
}

template <bool on>
void SetTags(CommandContext& context) {
  auto& list = context.session.list;
  if (context.session.mode == ViewMode::Main) return list.SetTag(list.currentIndex, on);
  on ? list.TagSelected() : list.UntagSelected();
}

void SaveTags(CommandContext& context) {
  const auto path = context.session.Ask().saveAs({.title = std::string(kSaveTagsTitle),
                                                  .filter = std::string(kTagFileFilter),
                                                  .defaultExtension = ".tag",
                                                  .start = context.session.Images().Directory()});
  if (path) context.session.Images().SaveTagList(*path);
}

template <catalogue::EarlierTags earlier>
void LoadTags(CommandContext& context) {
  auto& ignoreExtension = context.session.settings.catalogue.tagsIgnoreExt;
  const auto answer = OpenFile(context.frame, {.title = std::string(kLoadTagsTitle),
                                               .filter = std::string(kTagFileFilter),
                                               .start = context.session.Images().Directory(),
                                               .checkText = std::string(kIgnoreExtensions),
                                               .checked = ignoreExtension != 0});
  if (!answer) return;
  ignoreExtension = answer->checked ? 1 : 0;
  const auto match = answer->checked ? catalogue::TagMatch::StemOnly : catalogue::TagMatch::StemAndExtension;
  context.session.Images().LoadTagList(answer->path, earlier, match);
}

using catalogue::ImageList;
constexpr HandlerRow kHandlers[] = {
    {CommandId::SelectAll, Select<&ImageList::SelectAll>},
    {CommandId::SelectNone, Select<&ImageList::SelectNone>},
    {CommandId::InvertSelection, Select<&ImageList::InvertSelection>},
    {CommandId::SelectTagged, Select<&ImageList::SelectTagged>},
    {CommandId::TagImage, ToggleTag},
    {CommandId::AddTag, SetTags<true>},
    {CommandId::RemoveTag, SetTags<false>},
    {CommandId::TagSelected, ForAll<&ImageList::TagSelected>},
    {CommandId::UntagSelected, ForAll<&ImageList::UntagSelected>},
    {CommandId::TagNone, ForAll<&ImageList::TagNone>},
    {CommandId::SaveTags, SaveTags},
    {CommandId::LoadTags, LoadTags<catalogue::EarlierTags::Drop>},
    {CommandId::MergeTags, LoadTags<catalogue::EarlierTags::Keep>},
};

}  // namespace

std::span<const HandlerRow> TagHandlers() { return kHandlers; }

}  // namespace ml::app
