#include "app/command_facts.h"

#include <algorithm>

#include "app/session.h"
#include "imagefiles/format_table.h"
#include "imagefiles/raw_files.h"
#include "options/engine_options.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::app {
namespace {

/// Where galleries are made unless the user says otherwise, and their first page.
constexpr std::string_view kGalleryDirectory = "HTML", kGalleryIndex = "index.htm";

/// Whether a gallery was made of the images in `directory`.
bool HasGallery(const std::string& directory) {
  if (directory.empty()) return false;
  const auto index = platform::JoinPath(platform::JoinPath(directory, kGalleryDirectory), kGalleryIndex);
  return platform::Exists(index) || platform::Exists(index + "l");
}

bool TaggedBehindUntagged(const catalogue::ImageList& list) {
  const auto untagged = std::ranges::find(list.marks, false, &catalogue::ItemMarks::tagged);
  return std::any_of(untagged, list.marks.end(), [](const auto& marks) { return marks.tagged; });
}

/// The facts that decide which image commands act on.
CommandState PlaceOf(const Session& session) {
  CommandState state;
  state.mode = session.mode;
  state.imageCount = session.list.Count();
  state.currentIndex = session.list.currentIndex;
  state.focusIndex = session.list.focusIndex;
  return state;
}

void AddList(const Session& session, CommandState& state) {
  const auto& list = session.list;
  const auto& directory = session.Images().Directory();
  state.selectedCount = list.SelectedCount();
  state.taggedCount = list.TaggedCount();
  state.taggedBehindUntagged = TaggedBehindUntagged(list);
  state.hasParentDirectory = !directory.empty() && directory != "/";
  state.hasCustomOrder = !list.customOrder.empty();
  state.sortMethod = list.sortMethod;
  state.reverseSort = list.reverseSort;
  state.hasGallery = HasGallery(list.Directory());
}

void AddChoices(const Session& session, CommandState& state) {
  const auto& settings = session.settings;
  state.wraparound = settings.catalogue.wraparound != 0;
  state.thumbnailSizeMode = settings.catalogue.thumbnailSize;
  state.fullView = settings.catalogue.fullView != 0;
  state.highQuality = settings.display.highQualityMode != 0;
  state.flashingHighlights = settings.display.highlightBlink != 0;
  state.focusPoints = settings.display.showFocusPoints != 0;
  const auto& memory = session.memory;
  state.blackAndWhite = memory.blackAndWhite;
  state.statusBarShown = memory.statusBarShown;
  state.histogramShown = memory.histogramShown;
  state.shootingDataShown = memory.shootingDataShown;
}

}  // namespace

int TargetIndexOf(const Session& session) { return Target(PlaceOf(session)); }

CommandState CommandFacts::Gather(const Session& session) {
  auto state = PlaceOf(session);
  AddList(session, state);
  AddChoices(session, state);
  AddTargets(session, state);
  return state;
}

void CommandFacts::AddTargets(const Session& session, CommandState& state) {
  const auto& list = session.list;
  if (const int target = Target(state); target >= 0) {
    const auto index = static_cast<std::size_t>(target);
    state.targetTagged = list.marks[index].tagged;
    state.targetKinds = kinds_.Of(list.files[index]);
    const auto* item = session.Worker().Item(target);
    state.targetHasSound = item != nullptr && item->hasSound;
  }
  state.targetFromCanonEos = state.mode != ViewMode::Thumbnails && TargetFromCanonEos(session);
  if (state.mode == ViewMode::Main) {
    state.kinds = state.targetKinds;
    return;
  }
  for (std::size_t i = 0; i < list.files.size(); ++i) {
    if (list.marks[i].selected) kinds_.Add(list.files[i], state.kinds);
  }
}

metadata::ExifData* CommandFacts::TargetData(const Session& session) {
  const int index = TargetIndexOf(session);
  if (index < 0) return nullptr;
  return &shootingData_.Of(session.list.files[static_cast<std::size_t>(index)],
                           options::ExifOptionsOf(session.settings));
}

bool CommandFacts::TargetFromCanonEos(const Session& session) {
  const auto* data = TargetData(session);
  if (data == nullptr || data->model.find("Canon EOS") == std::string::npos) return false;
  const auto* row = imagefiles::FindFormat(data->path);
  if (row != nullptr && row->format == imagefiles::Format::Tiff) return data->isEos1DRaw;  // without reading it again
  return imagefiles::IsRawFile(data->path) || (row != nullptr && row->format == imagefiles::Format::Jpeg);
}

void CommandFacts::Forget() {
  kinds_.Forget();
  shootingData_.Forget();
}

}  // namespace ml::app
